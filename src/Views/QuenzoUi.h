// SPDX-License-Identifier: MIT
#pragma once

class QQmlEngine;

namespace QuenzoUi {

// Everything an engine needs before it loads qrc:/Quenzo/ContentView.qml: the import path of
// the module, the image providers, the style and the font. The window and the QML tests share it.
void prepare(QQmlEngine &engine);

} // namespace QuenzoUi
