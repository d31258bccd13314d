// SPDX-License-Identifier: MIT
import QtQuick

// A vertical divider, 12 points high.
Rectangle {
    implicitWidth: 1
    implicitHeight: 12
    color: Theme.hairline
}
