// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileCategory.h"

#include <QString>
#include <QStringList>

// The system symbol names the views use, mapped in this one place to the SVG icons bundled with
// the window (src/Views/icons, see docs/icons.md).
namespace SymbolImages {

// The symbol shown beside a category ("folder.fill" for Application Support).
[[nodiscard]] QString categorySymbol(FileCategory category);
// The bundled icon file for a symbol name ("folder.svg"); empty for an unknown name.
[[nodiscard]] QString iconFile(const QString &symbol);
// Symbols drawn as a filled disc with the glyph cut out in white ("checkmark.circle.fill").
[[nodiscard]] bool isCircleFill(const QString &symbol);
// Every symbol name the views may ask for.
[[nodiscard]] QStringList allSymbols();

} // namespace SymbolImages
