// SPDX-License-Identifier: MIT
// Leftovers of deleted apps as sessions of the usual uninstall.
#include "Platform/RunningApplications.h"
#include "Removal/AuthorizationService.h"
#include "Removal/ProcessService.h"
#include "Removal/UninstallService.h"
#include "ViewModels/LeftoverSessions.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(OrphanGroup)

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
    void fromGroups_data()
    {
        QTest::addColumn<QList<OrphanGroup>>("groups");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QList<int>>("selectedCounts");
        QTest::addColumn<QList<int>>("itemCounts");

        const FileItem strong = leftover(u"/a"_s, FileCategory::containers, true);
        const FileItem weak = leftover(u"/b"_s, FileCategory::caches, false);
        const FileItem bundle = leftover(u"/c.app"_s, FileCategory::application, true);
        QTest::newRow("the finder's selection is kept")
            << QList{OrphanGroup{u"Tracer"_s, u"com.gone.tracer"_s, {strong, weak}}}
            << QStringList{u"Tracer"_s} << QList{1} << QList{2};
        QTest::newRow("an app bundle is never taken over")
            << QList{OrphanGroup{u"Tracer"_s, u"com.gone.tracer"_s, {bundle, weak}}}
            << QStringList{u"Tracer"_s} << QList{0} << QList{1};
        QTest::newRow("a group with nothing left to move is dropped")
            << QList{OrphanGroup{u"Gone"_s, {}, {bundle}}, OrphanGroup{u"BrushCo"_s, {}, {weak}}}
            << QStringList{u"BrushCo"_s} << QList{0} << QList{1};
    }

    void fromGroups()
    {
        QFETCH(QList<OrphanGroup>, groups);
        const QList<LeftoverSessions::Entry> entries = LeftoverSessions::fromGroups(groups);
        QStringList names;
        QList<int> selected, counts;
        for (const LeftoverSessions::Entry &entry : entries) {
            QVERIFY(entry.app.bundlePath.isEmpty());
            names << entry.app.name;
            selected << int(std::count_if(entry.items.cbegin(), entry.items.cend(),
                                          [](const FileItem &item) { return item.isSelected; }));
            counts << int(entry.items.size());
        }
        QTEST(names, "names");
        QTEST(selected, "selectedCounts");
        QTEST(counts, "itemCounts");
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
        dependencies.authorization = std::make_shared<const AuthorizationService>(
            mac.layout(), std::make_shared<FakePrivilegedShell>(), FakePrivilegedShell::helper());
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
