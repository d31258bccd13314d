// SPDX-License-Identifier: MIT
// Leftovers of deleted apps as sessions of the usual uninstall.
#include "Platform/RunningApplications.h"
#include "Removal/ProcessService.h"
#include "Removal/UninstallService.h"
#include "ViewModels/LeftoverSessions.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
FileItem leftover(const QString &path, FileCategory category, bool selected)
{
    FileItem item = SessionRun::item(path, category);
    item.isSelected = selected;
    return item;
}

// A process of the deleted app's identifier that never quits; counts the requests to quit.
class StillRunning : public RunningApplications
{
public:
    QAtomicInt signalled;
    QList<RunningApplication> list() const override
    {
        RunningApplication tracer;
        tracer.processIdentifier = 4242;
        tracer.bundleIdentifier = u"com.gone.tracer"_s;
        return {tracer};
    }
    qint64 ownProcessIdentifier() const override { return 1; }
    void terminate(const RunningApplication &) override { signalled.ref(); }
    void forceTerminate(const RunningApplication &) override { signalled.ref(); }
    bool isTerminated(const RunningApplication &) const override { return false; }
};
} // namespace

class TestLeftoverSessions : public QObject
{
    Q_OBJECT

private slots:
    // The finder's selection is kept, an app bundle is never taken over and a group with
    // nothing left to move is dropped; no session has a bundle.
    void fromGroups()
    {
        const FileItem strong = leftover(u"/a"_s, FileCategory::containers, true);
        const FileItem weak = leftover(u"/b"_s, FileCategory::caches, false);
        const FileItem bundle = leftover(u"/c.app"_s, FileCategory::application, true);
        const auto entries = LeftoverSessions::fromGroups(
            {OrphanGroup{u"Tracer"_s, u"com.gone.tracer"_s, {strong, weak}},
             OrphanGroup{u"Gone"_s, {}, {bundle}}, OrphanGroup{u"BrushCo"_s, {}, {bundle, weak}}});
        QStringList shown;
        for (const LeftoverSessions::Entry &entry : entries) {
            QVERIFY(entry.app.bundlePath.isEmpty());
            shown << entry.app.name;
            for (const FileItem &item : entry.items)
                shown << item.path + (item.isSelected ? u" selected"_s : QString());
        }
        QCOMPARE(shown,
                 (QStringList{u"Tracer"_s, u"/a selected"_s, u"/b"_s, u"BrushCo"_s, u"/b"_s}));
    }

    // A program still running under the deleted app's identifier (as the Mac reports it) is not
    // the leftovers' to stop.
    void removalQuitsNoProcessOfTheSameIdentifier()
    {
        TemporaryFakeMac mac;
        QVERIFY(mac.isValid());
        FakeMacRemovalTools::install(mac);
        const QString cache = mac.addTextFile(u"~/Library/Caches/com.gone.tracer/c"_s, "x");
        const auto applications = std::make_shared<StillRunning>();
        const auto entries = LeftoverSessions::fromGroups(
            {OrphanGroup{u"Tracer"_s,
                         u"com.gone.tracer"_s,
                         {leftover(QFileInfo(cache).path(), FileCategory::caches, true)}}});
        UninstallService::Dependencies dependencies;
        dependencies.process = std::make_shared<const ProcessService>(
            mac.layout(),
            ProcessService::Dependencies{applications, {}, [](std::chrono::milliseconds) {}});
        UninstallService service(mac.layout(), dependencies);
        const auto session = SessionRun::readySession(entries.first().app, entries.first().items);
        QVERIFY(SessionRun::toCompletion(service, {session}));
        QCOMPARE(session->removedCount(), 1);
        QVERIFY(!QFileInfo::exists(cache));
        QCOMPARE(applications->signalled.loadRelaxed(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLeftoverSessions)
#include "tst_LeftoverSessions.moc"
