// SPDX-License-Identifier: MIT
import QtQuick

// A horizontal hairline divider.
Rectangle {
    implicitHeight: 1
    color: Theme.hairline
}
