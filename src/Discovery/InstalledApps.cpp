// SPDX-License-Identifier: MIT
#include "InstalledApps.h"

#include "Discovery/ToolQueries.h"
#include "Platform/Bundle.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QSet>

namespace InstalledApps {

namespace {
class Collector
{
public:
    explicit Collector(QString excludingPath) : m_excluding(std::move(excludingPath)) {}

    void addApp(const QString &path)
    {
        const QString cleaned = QDir::cleanPath(path);
        const bool excluded =
            !m_excluding.isEmpty() &&
            (cleaned == m_excluding || cleaned.startsWith(m_excluding + QLatin1Char('/')));
        if (excluded || cleaned.contains(QLatin1String("/.Trash/")) || m_seen.contains(cleaned))
            return;
        m_seen.insert(cleaned);
        const auto bundle = Bundle::open(cleaned);
        if (!bundle)
            return;
        if (const auto identifier = bundle->identifier())
            m_apps.append({cleaned, *identifier});
    }

    // Apps are taken and never entered; other folders are searched while depth lasts, also
    // when reached through a link. Each real folder is searched once, so a loop of links ends.
    void addIn(const QString &folder, int depth)
    {
        const QString real = QFileInfo(folder).canonicalFilePath();
        if (real.isEmpty() || m_searched.contains(real))
            return;
        m_searched.insert(real);
        const QFileInfoList entries = QDir(folder).entryInfoList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo &entry : entries) {
            if (entry.suffix() == QLatin1String("app"))
                addApp(entry.filePath());
            else if (depth > 0 && entry.isDir())
                addIn(entry.filePath(), depth - 1);
        }
    }

    [[nodiscard]] QList<InstalledApp> apps() const { return m_apps; }

private:
    QString m_excluding;
    QSet<QString> m_seen;
    QSet<QString> m_searched;
    QList<InstalledApp> m_apps;
};
} // namespace

QList<InstalledApp> find(const SystemLayout &layout, const ToolRunner &runner,
                         const QString &excludingPath, const QStringList &idPrefixes)
{
    Collector collector(excludingPath);
    collector.addIn(layout.path(QStringLiteral("/Applications")), 3);
    collector.addIn(layout.path(QStringLiteral("~/Applications")), 3);
    for (const QString &prefix : idPrefixes) {
        for (const QString &macPath : ToolQueries::spotlightApps(layout, runner, prefix))
            collector.addApp(layout.path(macPath));
    }
    return collector.apps();
}

} // namespace InstalledApps
