// SPDX-License-Identifier: MIT
// bench_discovery: discovery on a large fake Mac against the floor for the same work (listing
// the same folders and `du -s` over the same found items). Not a test: run it by hand.
#include "Platform/SystemLayout.h"
#include "Services/FileDiscoveryService.h"
#include "Services/SearchLocations.h"
#include "support/FakeMac.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtConcurrent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
QTextStream out(stdout);

constexpr int kApps = 300;
constexpr int kBatch = 10;
constexpr int kBigFolderFiles = 50'000;

QString appId(int i)
{
    return u"com.vendor%1.app%2"_s.arg(i % 60).arg(i);
}

AppInfo appInfo(const FakeMac &mac, int i)
{
    AppInfo app;
    app.name = u"App %1.app"_s.arg(i);
    app.bundleIdentifier = appId(i);
    app.bundlePath = mac.path(u"/Applications/"_s + app.name);
    return app;
}

// A folder of `count` small files in folders of 500, as caches and databases look.
void addFolderOfFiles(FakeMac &mac, const QString &macPath, int count)
{
    for (int i = 0; i < count; ++i)
        mac.addFile(u"%1/d%2/f%3"_s.arg(macPath).arg(i / 500).arg(i), 100 + i % 900);
}

void layOut(FakeMac &mac)
{
    mac.setDarwinUserDirectories(u"/private/var/folders/bb/C"_s, u"/private/var/folders/bb/T"_s);
    for (int i = 0; i < kApps; ++i) {
        FakeMac::App app;
        app.path = u"/Applications/App %1.app"_s.arg(i);
        app.identifier = appId(i);
        app.executable = u"App%1"_s.arg(i);
        mac.addApp(app);
    }
    // 20,000 entries of other apps across the Library folders.
    const QStringList folders{
        u"~/Library/Application Support"_s, u"~/Library/Caches"_s,
        u"~/Library/Preferences"_s,         u"~/Library/Containers"_s,
        u"/Library/Application Support"_s,  u"~/Library/Logs"_s,
        u"~/Library/HTTPStorages"_s,        u"~/Library/Saved Application State"_s};
    for (int i = 0; i < 20'000; ++i)
        mac.addFile(u"%1/org.other%2.tool/x"_s.arg(folders.at(i % folders.size())).arg(i), 10);
    // Every app leaves a few things; app 0 leaves two big folders.
    for (int i = 0; i < kApps; ++i) {
        mac.addFile(u"~/Library/Preferences/%1.plist"_s.arg(appId(i)), 2000);
        addFolderOfFiles(mac, u"~/Library/Caches/%1"_s.arg(appId(i)), i < kBatch ? 2000 : 20);
        mac.addFile(u"~/Library/Application Support/App %1/db"_s.arg(i), 50'000);
    }
    addFolderOfFiles(mac, u"~/Library/Application Support/App 0/Library"_s, kBigFolderFiles);
    addFolderOfFiles(mac, u"~/Library/Containers/%1"_s.arg(appId(0)), kBigFolderFiles);
}

double millisecondsOf(const std::function<void()> &work, int runs = 3)
{
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2); // the median
}

// The floor: list what discovery lists, then `du -s` the items it found.
void baseline(const QStringList &foundPaths)
{
    QStringList folders;
    for (const Location &location : SearchLocations::searchLocations())
        folders.append(location.path);
    folders << SystemLayout::path(u"~/Library/LaunchAgents"_s)
            << SystemLayout::path(u"/Library/LaunchAgents"_s)
            << SystemLayout::path(u"/Library/LaunchDaemons"_s)
            << SystemLayout::path(u"/private/var/db/receipts"_s) << SystemLayout::home()
            << SystemLayout::home() + u"/.config"_s;
    for (const QString &folder : folders)
        (void)QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                     QDir::NoDotAndDotDot);
    QProcess du;
    du.start(u"du"_s, QStringList{u"-s"_s} + foundPaths);
    du.waitForFinished(-1);
    (void)du.readAll();
}
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    QElapsedTimer timer;
    timer.start();
    layOut(mac);
    mac.activate();
    out << "Fake Mac: " << kApps << " apps, 20000 other entries, 2 found folders of "
        << kBigFolderFiles << " files (laid out in " << timer.elapsed() << " ms)\n";

    const FileDiscoveryService service;
    QList<AppInfo> batch;
    for (int i = 0; i < kBatch; ++i)
        batch.append(appInfo(mac, i));
    QList<FileItem> found = service.discoverFiles(batch.first()); // warms the caches
    QStringList foundPaths;
    for (const FileItem &item : std::as_const(found))
        foundPaths.append(item.path);

    const double one = millisecondsOf([&] { found = service.discoverFiles(batch.first()); });
    const double floor = millisecondsOf([&] { baseline(foundPaths); });
    const double sequential = millisecondsOf([&] {
        for (const AppInfo &app : std::as_const(batch))
            (void)service.discoverFiles(app);
    });
    const double parallel = millisecondsOf([&] {
        (void)QtConcurrent::blockingMapped(
            batch, [&service](const AppInfo &app) { return service.discoverFiles(app); });
    });
    out << "One app (" << found.size() << " items): discovery " << qRound(one)
        << " ms, baseline (list + du -s) " << qRound(floor) << " ms, ratio "
        << QString::number(one / floor, 'f', 2) << " (target <= 1.5)\n";
    out << kBatch << " apps: one after another " << qRound(sequential) << " ms, in parallel "
        << qRound(parallel) << " ms on " << QThread::idealThreadCount() << " threads, ratio "
        << QString::number(parallel / sequential, 'f', 2) << " (target < 1)\n";
    return 0;
}
