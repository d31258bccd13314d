// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

class QQmlEngine;

namespace QuenzoUi {

// Everything an engine needs before it loads qrc:/Quenzo/ContentView.qml: the import path of
// the module, the image providers, the style and the font. The window and the QML tests share it.
void prepare(QQmlEngine &engine);

enum class Appearance { Light, Dark };
// The Mac's own window, text and accent colours in one appearance, for platforms whose palette
// says nothing of them (a bare X server, the offscreen platform) and for pictures of both.
[[nodiscard]] QPalette macPalette(Appearance appearance);

} // namespace QuenzoUi
