// SPDX-License-Identifier: MIT
#include "SymbolImageProvider.h"

#include "UiLogging.h"
#include "ViewModels/SymbolImages.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QUrlQuery>

namespace {
QImage renderSvg(const QString &file, const QColor &color, const QSize &size, qreal strokeWidth)
{
    QFile svg(QStringLiteral(":/Quenzo/icons/") + file);
    if (!svg.open(QIODevice::ReadOnly)) {
        qCDebug(lcUi) << "no bundled icon" << file;
        return {};
    }
    QByteArray source = svg.readAll();
    source.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    source.replace("stroke-width=\"2\"",
                   "stroke-width=\"" + QByteArray::number(strokeWidth) + "\"");
    // Rendered at the size asked for; scaling the 24-point drawing up would blur it.
    QBuffer buffer(&source);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(size);
    QImage image = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        qCDebug(lcUi) << "icon" << file << "could not be drawn:" << reader.errorString();
        return {};
    }
    if (color.alphaF() < 1.0) {
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(image.rect(), QColor(0, 0, 0, color.alpha()));
    }
    return image;
}

QImage circleFill(const QString &file, const QColor &color, const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(image.rect()));
    const QSize glyphSize = size * 0.62;
    const QImage glyph = renderSvg(file, Qt::white, glyphSize, 3.0);
    painter.drawImage((size.width() - glyph.width()) / 2, (size.height() - glyph.height()) / 2,
                      glyph);
    return image;
}
// Replaces the glyph's colour by a top-leading to bottom-trailing gradient, keeping its shape.
void paintGradient(QImage &image, const QColor &from, const QColor &to)
{
    QLinearGradient gradient(0, 0, image.width(), image.height());
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), gradient);
}
} // namespace

SymbolImageProvider::SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const qsizetype query = id.indexOf(u'?');
    const QString symbol = id.left(query);
    const QUrlQuery options(query < 0 ? QString() : id.mid(query + 1));
    // "#" would start the URL's fragment, so colours come as bare hex digits (RRGGBB, AARRGGBB).
    QColor color(u'#' + options.queryItemValue(QStringLiteral("color")));
    if (!color.isValid())
        color = Qt::black;
    const QSize target =
        requestedSize.isValid() && !requestedSize.isEmpty() ? requestedSize : QSize(64, 64);
    const QString file = SymbolImages::iconFile(symbol);
    const double weight = options.queryItemValue(QStringLiteral("weight")).toDouble();
    QImage image = SymbolImages::isCircleFill(symbol)
                       ? circleFill(file, color, target)
                       : renderSvg(file, color, target, weight > 0 ? weight : 2.0);
    const QColor second(u'#' + options.queryItemValue(QStringLiteral("color2")));
    if (second.isValid() && !image.isNull())
        paintGradient(image, color, second);
    if (size)
        *size = image.size();
    return image;
}
