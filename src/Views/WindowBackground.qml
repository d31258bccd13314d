// SPDX-License-Identifier: MIT
import QtQuick

// The full-bleed window background: window colour top-leading to under-page colour.
GradientRect {
    anchors.fill: parent
    startColor: Theme.windowBackground
    endColor: Theme.underPageBackground
}
