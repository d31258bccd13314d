// SPDX-License-Identifier: MIT
#include "QuenzoUi.h"

#include "ShadowImageProvider.h"
#include "SymbolImageProvider.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickStyle>

namespace QuenzoUi {

void prepare(QQmlEngine &engine)
{
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    // Inter where it is installed (fonts-inter), else the platform's sans-serif.
    if (QFontDatabase::families().contains(QStringLiteral("Inter"))) {
        QFont font(QStringLiteral("Inter"));
        font.setPixelSize(13);
        QGuiApplication::setFont(font);
    }
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImageProvider);
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowImageProvider);
}

} // namespace QuenzoUi
