// SPDX-License-Identifier: MIT
#include "FileDiscoveryService.h"

#include "Discovery/DiscoveryResults.h"
#include "Discovery/FingerprintBuilder.h"
#include "Discovery/LibraryScan.h"
#include "Discovery/OwnFolderScans.h"
#include "Discovery/SearchLocations.h"
#include "Discovery/SizeMeasurer.h"
#include "Platform/ToolRunner.h"

#include <QFile>

using namespace Qt::StringLiterals;

FileDiscoveryService::FileDiscoveryService(SystemLayout layout,
                                           std::shared_ptr<const ToolRunner> runner,
                                           Progress progress)
    : m_layout(std::move(layout)),
      m_runner(runner ? std::move(runner) : std::make_shared<const ToolRunner>()),
      m_progress(std::move(progress))
{}

QList<FileItem> FileDiscoveryService::discoverFiles(const AppInfo &app) const
{
    report(app, m_layout.displayPath(app.bundlePath));
    const Fingerprint fingerprint = FingerprintBuilder(m_layout, *m_runner).build(app);
    DiscoveryResults results;

    FileItem bundle;
    bundle.path = app.bundlePath;
    bundle.category = FileCategory::application;
    bundle.size = SizeMeasurer::itemSize(app.bundlePath);
    bundle.isSelected = !app.isSystemProtected;
    bundle.isProtected = app.isSystemProtected;
    bundle.reason = u"the app"_s;
    if (app.isSystemProtected)
        bundle.note = u"Part of macOS"_s;
    results.add(std::move(bundle));

    LibraryScan library(fingerprint, results);
    for (const Location &location : SearchLocations::searchLocations(m_layout)) {
        report(app, m_layout.displayPath(location.path));
        library.scan(location);
    }
    report(app, u"launch agents and daemons"_s);
    OwnFolderScans::scanLaunchItems(m_layout, fingerprint, results);
    report(app, u"installer receipts"_s);
    OwnFolderScans::scanReceipts(m_layout, fingerprint, results);
    report(app, u"~"_s);
    OwnFolderScans::scanHomeFolder(m_layout, fingerprint, results);
    report(app, u"command-line tools"_s);
    OwnFolderScans::scanCommandLineLinks(m_layout, fingerprint, results);
    QList<FileItem> items = results.takeItems();
    describePlaces(items, m_layout);
    return items;
}

void FileDiscoveryService::report(const AppInfo &app, const QString &location) const
{
    if (m_progress)
        m_progress(app.displayName(), location);
}

bool FileDiscoveryService::hasFullDiskAccess() const
{
    QFile database(m_layout.path(u"/Library/Application Support/com.apple.TCC/TCC.db"_s));
    return database.open(QIODevice::ReadOnly);
}
