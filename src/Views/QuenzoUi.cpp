// SPDX-License-Identifier: MIT
#include "QuenzoUi.h"

#include "ShadowImageProvider.h"
#include "SymbolImageProvider.h"

#include <QColor>
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

QPalette macPalette(Appearance appearance)
{
    const bool dark = appearance == Appearance::Dark;
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const char *color) {
        palette.setColor(role, QColor(QLatin1String(color)));
    };
    set(QPalette::Window, dark ? "#1e1f23" : "#f5f6f9");
    set(QPalette::Base, dark ? "#28292e" : "#ffffff");
    set(QPalette::AlternateBase, dark ? "#2e2f34" : "#f4f5f7");
    set(QPalette::Button, dark ? "#3a3b40" : "#ffffff");
    set(QPalette::WindowText, dark ? "#f2f2f7" : "#1d1d1f");
    set(QPalette::Text, dark ? "#f2f2f7" : "#1d1d1f");
    set(QPalette::ButtonText, dark ? "#f2f2f7" : "#1d1d1f");
    set(QPalette::PlaceholderText, dark ? "#98989f" : "#6e6e73");
    set(QPalette::Highlight, dark ? "#0a84ff" : "#007aff");
    set(QPalette::HighlightedText, "#ffffff");
    set(QPalette::Link, dark ? "#0a84ff" : "#007aff");
    return palette;
}

} // namespace QuenzoUi
