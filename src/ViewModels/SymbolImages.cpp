// SPDX-License-Identifier: MIT
#include "SymbolImages.h"

#include <QHash>

namespace SymbolImages {

namespace {
const QHash<QString, QString> &iconFiles()
{
    static const QHash<QString, QString> files{
        {QStringLiteral("app.fill"), QStringLiteral("app-window.svg")},
        {QStringLiteral("folder.fill"), QStringLiteral("folder.svg")},
        {QStringLiteral("shippingbox.fill"), QStringLiteral("package.svg")},
        {QStringLiteral("gearshape.fill"), QStringLiteral("settings.svg")},
        {QStringLiteral("tray.fill"), QStringLiteral("inbox.svg")},
        {QStringLiteral("globe"), QStringLiteral("globe.svg")},
        {QStringLiteral("macwindow"), QStringLiteral("app-window-mac.svg")},
        {QStringLiteral("doc.text.fill"), QStringLiteral("file-text.svg")},
        {QStringLiteral("arrow.clockwise.circle.fill"), QStringLiteral("refresh-cw.svg")},
        {QStringLiteral("server.rack"), QStringLiteral("server.svg")},
        {QStringLiteral("wrench.and.screwdriver.fill"), QStringLiteral("wrench.svg")},
        {QStringLiteral("doc.plaintext.fill"), QStringLiteral("receipt.svg")},
        {QStringLiteral("clock.fill"), QStringLiteral("clock.svg")},
        {QStringLiteral("house.fill"), QStringLiteral("house.svg")},
        {QStringLiteral("doc.fill"), QStringLiteral("file.svg")},
        {QStringLiteral("trash.circle.fill"), QStringLiteral("trash-2.svg")},
        {QStringLiteral("trash"), QStringLiteral("trash-2.svg")},
        {QStringLiteral("lock.shield"), QStringLiteral("shield-check.svg")},
        {QStringLiteral("exclamationmark.shield.fill"), QStringLiteral("shield-alert.svg")},
        {QStringLiteral("list.bullet.rectangle"), QStringLiteral("scroll-text.svg")},
        {QStringLiteral("plus.circle.fill"), QStringLiteral("plus.svg")},
        {QStringLiteral("checkmark.circle.fill"), QStringLiteral("check.svg")},
        {QStringLiteral("xmark.circle.fill"), QStringLiteral("x.svg")},
        {QStringLiteral("exclamationmark.circle.fill"), QStringLiteral("exclamation.svg")},
    };
    return files;
}
} // namespace

QString categorySymbol(FileCategory category)
{
    switch (category) {
    case FileCategory::application:
        return QStringLiteral("app.fill");
    case FileCategory::applicationSupport:
        return QStringLiteral("folder.fill");
    case FileCategory::containers:
        return QStringLiteral("shippingbox.fill");
    case FileCategory::preferences:
        return QStringLiteral("gearshape.fill");
    case FileCategory::caches:
        return QStringLiteral("tray.fill");
    case FileCategory::webData:
        return QStringLiteral("globe");
    case FileCategory::savedState:
        return QStringLiteral("macwindow");
    case FileCategory::logs:
        return QStringLiteral("doc.text.fill");
    case FileCategory::launchAgents:
        return QStringLiteral("arrow.clockwise.circle.fill");
    case FileCategory::launchDaemons:
        return QStringLiteral("server.rack");
    case FileCategory::helperTools:
        return QStringLiteral("wrench.and.screwdriver.fill");
    case FileCategory::receipts:
        return QStringLiteral("doc.plaintext.fill");
    case FileCategory::temporary:
        return QStringLiteral("clock.fill");
    case FileCategory::homeFolder:
        return QStringLiteral("house.fill");
    case FileCategory::other:
        break;
    }
    return QStringLiteral("doc.fill");
}

QString iconFile(const QString &symbol)
{
    return iconFiles().value(symbol);
}

bool isCircleFill(const QString &symbol)
{
    return symbol == QLatin1String("checkmark.circle.fill") ||
           symbol == QLatin1String("xmark.circle.fill") ||
           symbol == QLatin1String("exclamationmark.circle.fill") ||
           symbol == QLatin1String("plus.circle.fill");
}

QStringList allSymbols()
{
    return iconFiles().keys();
}

} // namespace SymbolImages
