// SPDX-License-Identifier: MIT
#include "Platform/RunningApplications.h"
#include "Platform/SystemLayout.h"
#include "Removal/ProcessService.h"
#include "fakemac/FakeMac.h"
#include "fakemac/FakeMacRemovalTools.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// A process table in memory. Each process quits after a given number of looks once asked, or
// only when forced, or never.
class FakeApplications : public RunningApplications
{
public:
    struct Process
    {
        RunningApplication application;
        int looksUntilQuit = 0; // after terminate; -1: ignores terminate
        bool survivesForce = false;
        bool asked = false;
        bool forced = false;
    };

    QList<RunningApplication> list() const override
    {
        QList<RunningApplication> result;
        for (const Process &process : processes)
            result.append(process.application);
        return result;
    }
    qint64 ownProcessIdentifier() const override { return 1; }
    void terminate(const RunningApplication &application) override
    {
        find(application).asked = true;
        events.append(u"terminate %1"_s.arg(application.processIdentifier));
    }
    void forceTerminate(const RunningApplication &application) override
    {
        find(application).forced = true;
        events.append(u"force %1"_s.arg(application.processIdentifier));
    }
    bool isTerminated(const RunningApplication &application) const override
    {
        Process &process = const_cast<FakeApplications *>(this)->find(application);
        if (process.forced)
            return !process.survivesForce;
        if (!process.asked || process.looksUntilQuit < 0)
            return false;
        return process.looksUntilQuit-- <= 0;
    }

    Process &find(const RunningApplication &application)
    {
        for (Process &process : processes) {
            if (process.application.processIdentifier == application.processIdentifier)
                return process;
        }
        qFatal("unknown process");
    }

    QList<Process> processes;
    mutable QStringList events;
};

RunningApplication executableAt(qint64 pid, const QString &executable)
{
    return RunningApplication{pid, std::nullopt, std::nullopt, executable, 0};
}
} // namespace

class TestProcessService : public QObject
{
    Q_OBJECT

private:
    std::shared_ptr<FakeApplications> m_applications;
    int m_sleeps = 0;

    ProcessService makeService()
    {
        m_sleeps = 0;
        return ProcessService(ProcessService::Dependencies{
            m_applications, nullptr, [this](std::chrono::milliseconds duration) {
                QCOMPARE(duration.count(), 500);
                ++m_sleeps;
            }});
    }

private slots:
    void init() { m_applications = std::make_shared<FakeApplications>(); }

    void quitPollsThenForces_data()
    {
        QTest::addColumn<int>("looksUntilQuit");
        QTest::addColumn<bool>("survivesForce");
        QTest::addColumn<int>("sleeps");
        QTest::addColumn<bool>("forced");
        QTest::addColumn<bool>("fails");
        QTest::newRow("quits at once") << 0 << false << 0 << false << false;
        QTest::newRow("quits after 1.2 s") << 3 << false << 3 << false << false;
        QTest::newRow("quits at the last look") << 10 << false << 10 << false << false;
        QTest::newRow("ignores terminate") << -1 << false << 11 << true << false;
        QTest::newRow("survives force") << -1 << true << 11 << true << true;
    }

    void quitPollsThenForces()
    {
        QFETCH(int, looksUntilQuit);
        QFETCH(bool, survivesForce);
        QFETCH(int, sleeps);
        QFETCH(bool, forced);
        QFETCH(bool, fails);
        m_applications->processes.append(
            {executableAt(42, u"/Applications/A.app/Contents/MacOS/A"_s), looksUntilQuit,
             survivesForce});
        const ProcessService service = makeService();
        const auto error = service.quitApp(u"com.example.a"_s, u"/Applications/A.app"_s);
        QCOMPARE(m_sleeps, sleeps);
        QCOMPARE(m_applications->processes.first().forced, forced);
        QCOMPARE(error.has_value(), fails);
        if (fails)
            QCOMPARE(error->message(), u"Failed to quit the application"_s);
    }

    void quitChoosesTheBundlesProcesses()
    {
        RunningApplication byIdentifier{10, u"com.example.a"_s, std::nullopt, std::nullopt, 0};
        RunningApplication nested{11, std::nullopt, u"/Applications/A.app/Contents/Helpers/H.app"_s,
                                  std::nullopt, 0};
        RunningApplication helper = executableAt(12, u"/Applications/A.app/Contents/XPC/h"_s);
        RunningApplication dotted =
            executableAt(13, u"/Applications/./A.app/Contents/MacOS/../MacOS/A"_s);
        RunningApplication neighbour = executableAt(20, u"/Applications/A.app2/Contents/MacOS/A"_s);
        RunningApplication other = executableAt(21, u"/Applications/B.app/Contents/MacOS/B"_s);
        // Below the bundle's folder but not its code: what a bundle-shaped link may lead to.
        RunningApplication outsider =
            executableAt(22, u"/Applications/A.app/Other.app/Contents/MacOS/O"_s);
        RunningApplication self = executableAt(1, u"/Applications/A.app/Contents/MacOS/quenzo"_s);
        for (const auto &application :
             {self, byIdentifier, neighbour, nested, other, outsider, helper, dotted})
            m_applications->processes.append({application});
        const ProcessService service = makeService();
        QVERIFY(!service.quitApp(u"com.example.a"_s, u"/Applications/A.app/"_s));
        QCOMPARE(m_applications->events, QStringList({u"terminate 10"_s, u"terminate 11"_s,
                                                      u"terminate 12"_s, u"terminate 13"_s}));
    }

    void quitStopsAtTheFirstRefusal()
    {
        m_applications->processes.append(
            {executableAt(30, u"/Applications/A.app/Contents/MacOS/A"_s), -1, true});
        m_applications->processes.append(
            {executableAt(31, u"/Applications/A.app/Contents/MacOS/A"_s)});
        const ProcessService service = makeService();
        QCOMPARE(service.quitApp(u"com.example.a"_s, u"/Applications/A.app"_s),
                 std::optional(UninstallError::failedToQuitApp()));
        QCOMPARE(m_applications->events, QStringList({u"terminate 30"_s, u"force 30"_s}));
    }

    void nothingRunning()
    {
        m_applications->processes.append(
            {executableAt(1, u"/Applications/A.app/Contents/MacOS/A"_s)});
        const auto error = makeService().quitApp(u"com.example.a"_s, u"/Applications/A.app"_s);
        QVERIFY(error);
        QCOMPARE(error->message(), u"Application is not running"_s);
    }

    void runMergesAndTrimsOutput_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("output");
        QTest::newRow("standard output") << u"echo '  out  '"_s << 0 << u"out"_s;
        QTest::newRow("only standard error") << u"echo oops >&2; exit 3"_s << 3 << u"oops"_s;
        QTest::newRow("both") << u"echo a; echo b >&2"_s << 0 << u"a\nb"_s;
        QTest::newRow("not UTF-8") << u"printf '\\377\\376'"_s << 0 << QString();
        QTest::newRow("more than a pipe holds")
            << u"head -c 200000 /dev/zero | tr '\\0' x; echo"_s << 0 << QString(200000, u'x');
    }

    void runMergesAndTrimsOutput()
    {
        QFETCH(QString, script);
        QFETCH(int, status);
        QFETCH(QString, output);
        const ProcessOutput result = ProcessService().run(u"/bin/sh"_s, {u"-c"_s, script});
        QCOMPARE(result.status, status);
        QCOMPARE(result.output, output);
    }

    void runReportsAToolThatCannotStart()
    {
        const ProcessOutput result = ProcessService().run(u"/nonexistent/tool"_s, {});
        QCOMPARE(result.status, -1);
        QVERIFY(!result.output.isEmpty());
    }

    void unloadUsesLaunchctlOfTheMac()
    {
        QTemporaryDir dir;
        FakeMac mac(dir.path());
        mac.activate();
        FakeMacRemovalTools::install(mac);
        const QString loaded = mac.addTextFile(u"~/Library/LaunchAgents/a.plist"_s, "a");
        const QString idle = mac.addTextFile(u"~/Library/LaunchAgents/b.plist"_s, "b");
        FakeMacRemovalTools::setLoadedJobs(mac, {loaded});
        const ProcessService service;
        QVERIFY(!service.unloadLaunchItem(loaded));
        QCOMPARE(service.unloadLaunchItem(idle),
                 std::optional(UninstallError::failedToUnloadLaunchItem(
                     FakeMacRemovalTools::notLoadedMessage())));
        QCOMPARE(mac.calls(), QList<QStringList>({{u"/bin/launchctl"_s, u"unload"_s, loaded},
                                                  {u"/bin/launchctl"_s, u"unload"_s, idle}}));
        SystemLayout::reset();
    }
};

QTEST_GUILESS_MAIN(TestProcessService)
#include "tst_ProcessService.moc"
