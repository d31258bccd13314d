// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickImageProvider>

// "image://symbol/NAME?color=RRGGBB&weight=W[&color2=RRGGBB]": a system symbol drawn from its
// bundled SVG in one colour (or a diagonal gradient to color2), strokes W wide. Symbols named
// ".circle.fill" become a filled disc with the glyph in white. Works with every scene graph
// backend, the software one included.
class SymbolImageProvider : public QQuickImageProvider
{
public:
    SymbolImageProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
