// SPDX-License-Identifier: MIT
#include "IconShape.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace IconShape {

QByteArray rounded(const QByteArray &encoded)
{
    QImage image;
    if (!image.loadFromData(encoded) || image.isNull())
        return encoded; // the view shows its placeholder for what does not decode
    QImage clipped(image.size(), QImage::Format_ARGB32_Premultiplied);
    clipped.fill(Qt::transparent);
    QPainter painter(&clipped);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal radius = std::min(image.width(), image.height()) * 0.22;
    QPainterPath shape;
    shape.addRoundedRect(QRectF(image.rect()), radius, radius);
    painter.setClipPath(shape);
    painter.drawImage(0, 0, image);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    clipped.save(&buffer, "PNG");
    return png;
}

} // namespace IconShape
