// SPDX-License-Identifier: MIT
// bench_discovery: discovery on a large fake Mac against the floor for the same work (listing
// the same folders and `du -s` over the same found items). Not a test: run it by hand.
#include "Discovery/FileDiscoveryService.h"
#include "Discovery/SearchLocations.h"
#include "Platform/SystemLayout.h"
#include "fakemac/FakeMac.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtConcurrent>

#include <algorithm>

#include <dirent.h>

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

double millisecondsSince(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// Lists a folder the cheapest way there is (no stat, no sorting) and calls `subfolder` with the
// path of every entry the folder marks as a folder.
template <typename Subfolder> void list(const QString &folder, Subfolder subfolder)
{
    DIR *dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return;
    while (const dirent *entry = ::readdir(dir)) {
        const QString name = QFile::decodeName(entry->d_name);
        if (entry->d_type == DT_DIR && name != u"."_s && name != u".."_s)
            subfolder(folder + u'/' + name);
    }
    ::closedir(dir);
}

void list(const QString &folder)
{
    list(folder, [](const QString &) {});
}

// The Applications folders as discovery searches them for other apps: four levels deep, apps
// listed but never entered (reading their Info.plist is discovery's own work, not the floor's).
void listApplications(const QString &folder, int depth)
{
    list(folder, [depth](const QString &subfolder) {
        if (depth > 0 && !subfolder.endsWith(u".app"_s))
            listApplications(subfolder, depth - 1);
    });
}

// The floor: list every folder discovery lists, then `du -s` the items it found.
void baseline(const SystemLayout &layout, const QStringList &foundPaths)
{
    listApplications(layout.path(u"/Applications"_s), 3);
    listApplications(layout.path(u"~/Applications"_s), 3);
    for (const Location &location : SearchLocations::searchLocations(layout))
        list(location.path);
    for (const QString &folder :
         {u"~/Library/LaunchAgents"_s, u"/Library/LaunchAgents"_s, u"/Library/LaunchDaemons"_s,
          u"/private/var/db/receipts"_s, u"~"_s, u"~/.config"_s, u"/usr/local/bin"_s,
          u"/opt/homebrew/bin"_s})
        list(layout.path(folder));
    QProcess du;
    du.setStandardOutputFile(QProcess::nullDevice());
    du.start(u"du"_s, QStringList{u"-s"_s} + foundPaths);
    du.waitForFinished(-1);
}

QString ratioText(double ratio)
{
    return QString::number(ratio, 'f', 2);
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
    out << "Fake Mac: " << kApps << " apps, 20000 other entries, 2 found folders of "
        << kBigFolderFiles << " files (laid out in " << timer.elapsed() << " ms)\n";

    const SystemLayout layout = mac.layout();
    const FileDiscoveryService service(layout);
    QList<AppInfo> batch;
    for (int i = 0; i < kBatch; ++i)
        batch.append(appInfo(mac, i));
    QList<FileItem> found = service.discoverFiles(batch.first()); // warms the caches
    QStringList foundPaths;
    for (const FileItem &item : std::as_const(found))
        foundPaths.append(item.path);

    // Rounds interleave discovery with its baseline so that load from other programs falls on
    // both alike; each figure is the median over the rounds.
    const int rounds = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 7;
    QList<double> one, base, sequential, parallel;
    for (int round = 0; round < rounds; ++round) {
        timer.start();
        found = service.discoverFiles(batch.first());
        one.append(millisecondsSince(timer));
        timer.start();
        baseline(layout, foundPaths);
        base.append(millisecondsSince(timer));
        timer.start();
        for (const AppInfo &app : std::as_const(batch))
            (void)service.discoverFiles(app);
        sequential.append(millisecondsSince(timer));
        timer.start();
        (void)QtConcurrent::blockingMapped(
            batch, [&service](const AppInfo &app) { return service.discoverFiles(app); });
        parallel.append(millisecondsSince(timer));
        out << "round " << round + 1 << ": one app " << qRound(one.last()) << " ms, baseline "
            << qRound(base.last()) << " ms, ratio " << ratioText(one.last() / base.last())
            << "; 10 apps " << qRound(sequential.last()) << " ms one after another, "
            << qRound(parallel.last()) << " ms in parallel, ratio "
            << ratioText(parallel.last() / sequential.last()) << Qt::endl;
    }
    const double oneMs = median(one), floorMs = median(base);
    const double sequentialMs = median(sequential), parallelMs = median(parallel);
    out << "\nMedians of " << rounds << " rounds (" << QThread::idealThreadCount()
        << " threads):\n";
    out << "  One app (" << found.size() << " items): discovery " << qRound(oneMs)
        << " ms, baseline (list the same folders + du -s the same items) " << qRound(floorMs)
        << " ms\n";
    out << "  RATIO one app / baseline      = " << ratioText(oneMs / floorMs)
        << "  (target <= 1.50: " << (oneMs <= 1.5 * floorMs ? "met" : "NOT met") << ")\n";
    out << "  " << kBatch << " apps: one after another " << qRound(sequentialMs)
        << " ms, in parallel " << qRound(parallelMs) << " ms\n";
    out << "  RATIO parallel / one by one   = " << ratioText(parallelMs / sequentialMs)
        << "  (target < 1.00: " << (parallelMs < sequentialMs ? "met" : "NOT met") << ")\n";
    return 0;
}
