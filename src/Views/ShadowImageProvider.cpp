// SPDX-License-Identifier: MIT
#include "ShadowImageProvider.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>

namespace {
// One pass of a box blur along rows (horizontal) or columns on premultiplied ARGB.
void boxBlur(QImage &image, int radius, bool horizontal)
{
    const int length = horizontal ? image.width() : image.height();
    const int lines = horizontal ? image.height() : image.width();
    QList<int> sums(4);
    QList<QRgb> line(length);
    for (int l = 0; l < lines; ++l) {
        auto pixel = [&](int i) -> QRgb & {
            return horizontal ? reinterpret_cast<QRgb *>(image.scanLine(l))[i]
                              : reinterpret_cast<QRgb *>(image.scanLine(i))[l];
        };
        for (int i = 0; i < length; ++i)
            line[i] = pixel(i);
        int a = 0, r = 0, g = 0, b = 0;
        const int window = 2 * radius + 1;
        for (int i = -radius - 1; i < length; ++i) {
            const int in = i + radius;
            const int out = i - radius - 1;
            if (in >= 0 && in < length) {
                a += qAlpha(line[in]), r += qRed(line[in]), g += qGreen(line[in]),
                    b += qBlue(line[in]);
            }
            if (out >= 0) {
                a -= qAlpha(line[out]), r -= qRed(line[out]), g -= qGreen(line[out]),
                    b -= qBlue(line[out]);
            }
            if (i >= 0)
                pixel(i) = qRgba(r / window, g / window, b / window, a / window);
        }
    }
}
} // namespace

ShadowImageProvider::ShadowImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage ShadowImageProvider::requestImage(const QString &id, QSize *size, const QSize &)
{
    const QStringList parts = id.split(u',');
    if (parts.size() != 7)
        return {};
    const int width = std::clamp(parts.at(0).toInt(), 1, 4096);
    const int height = std::clamp(parts.at(1).toInt(), 1, 4096);
    const qreal radius = parts.at(2).toDouble();
    const int blur = std::clamp(parts.at(3).toInt(), 0, 128);
    const QColor color(u'#' + parts.at(4));
    const int dx = std::clamp(parts.at(5).toInt(), -128, 128);
    const int dy = std::clamp(parts.at(6).toInt(), -128, 128);

    // The shape itself sits at (margin.x, margin.y); its shadow is moved by (dx, dy).
    const QPoint margin(blur + std::abs(dx), blur + std::abs(dy));
    QImage image(width + 2 * margin.x(), height + 2 * margin.y(),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(margin, QSizeF(width, height)), radius, radius);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape.translated(dx, dy), color);
    painter.end();
    // Three box passes each way approximate a gaussian of about the blur radius.
    const int pass = std::max(1, blur / 3);
    for (int i = 0; i < 3 && blur > 0; ++i) {
        boxBlur(image, pass, true);
        boxBlur(image, pass, false);
    }
    // Hollow under the shape, so translucent surfaces are not darkened by their own shadow.
    painter.begin(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(shape, Qt::black);
    painter.end();
    if (size)
        *size = image.size();
    return image;
}
