// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickImageProvider>

// "image://shadow/WIDTH,HEIGHT,RADIUS,BLUR,AARRGGBB,DX,DY": the soft shadow of a rounded
// rectangle moved by (DX, DY) and blurred by BLUR pixels, hollow where the shape itself lies. The
// image is BLUR + |DX| (BLUR + |DY|) larger on each side than the shape. Drawn on the CPU, so
// soft shadows need no shader effects.
class ShadowImageProvider : public QQuickImageProvider
{
public:
    ShadowImageProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
