// SPDX-License-Identifier: MIT
import QtQuick

// A horizontal divider at 30 % opacity.
Rectangle {
    implicitHeight: 1
    color: Qt.rgba(0, 0, 0, 0.3 * 0.35)
}
