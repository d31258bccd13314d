// SPDX-License-Identifier: MIT
#include "PreferenceDomains.h"

#include "Core/PackageIdentifier.h"
#include "Platform/SystemLayout.h"

namespace PreferenceDomains {

namespace {
QString withoutExtension(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? name.left(dot) : name;
}

bool isDomain(const QString &domain)
{
    // The identifier rules also demand an alphanumeric first letter, which keeps the global
    // preferences file (".GlobalPreferences") out.
    return domain.contains(QLatin1Char('.')) && domain != QLatin1String("NSGlobalDomain") &&
           PackageIdentifier::isValid(domain);
}
} // namespace

QList<PreferenceDomain> in(const SystemLayout &layout, const QList<FileItem> &items)
{
    const QString preferences = layout.home() + QStringLiteral("/Library/Preferences/");
    const QString byHost = preferences + QStringLiteral("ByHost/");
    QList<PreferenceDomain> result;
    for (const FileItem &item : items) {
        if (item.category != FileCategory::preferences ||
            !item.path.endsWith(QLatin1String(".plist")))
            continue;
        const QString name = withoutExtension(item.path.mid(item.path.lastIndexOf(u'/') + 1));
        PreferenceDomain entry;
        if (item.path.startsWith(byHost))
            entry = PreferenceDomain{withoutExtension(name), true};
        else if (item.path.startsWith(preferences))
            entry = PreferenceDomain{name, false};
        else
            continue;
        if (isDomain(entry.domain))
            result.append(entry);
    }
    return result;
}

} // namespace PreferenceDomains
