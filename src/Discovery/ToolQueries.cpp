// SPDX-License-Identifier: MIT
#include "ToolQueries.h"

#include "Core/PackageIdentifier.h"
#include "Platform/SystemLayout.h"
#include "Platform/ToolRunner.h"

#include <QStringDecoder>

namespace ToolQueries {

namespace {
QStringList outputLines(const ToolResult &result)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(result.output);
    if (decoder.hasError())
        return {};
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
} // namespace

QStringList installerPackageIDs(const SystemLayout &layout, const ToolRunner &runner,
                                const QString &macPath)
{
    const ToolResult result =
        runner.run(layout.path(QStringLiteral("/usr/sbin/pkgutil")),
                   {QStringLiteral("--file-info"), macPath}, ToolRunner::ErrorOutput::discard);
    QStringList ids;
    const QLatin1String key("pkgid: ");
    for (const QString &line : outputLines(result)) {
        if (!line.startsWith(key))
            continue;
        const QString id = line.mid(key.size()).trimmed();
        if (PackageIdentifier::isValid(id))
            ids.append(id);
    }
    return ids;
}

QString spotlightQuery(const QString &prefix)
{
    return QStringLiteral("kMDItemContentType == 'com.apple.application-bundle' && "
                          "kMDItemCFBundleIdentifier == '") +
           prefix + QStringLiteral("*'c");
}

QStringList spotlightApps(const SystemLayout &layout, const ToolRunner &runner,
                          const QString &prefix)
{
    QString bare = prefix;
    if (bare.endsWith(QLatin1Char('.')))
        bare.chop(1);
    if (!PackageIdentifier::isValid(bare))
        return {};
    const ToolResult result =
        runner.run(layout.path(QStringLiteral("/usr/bin/mdfind")), {spotlightQuery(prefix)},
                   ToolRunner::ErrorOutput::discard);
    QStringList apps;
    for (const QString &line : outputLines(result)) {
        if (line.endsWith(QLatin1String(".app")))
            apps.append(line);
    }
    return apps;
}

} // namespace ToolQueries
