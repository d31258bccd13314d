// SPDX-License-Identifier: MIT
#include "Platform/RunningApplications.h"
#include "Removal/ProcessService.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString kExecutable = u"/Applications/A.app/Contents/MacOS/A"_s;

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
    };

    void add(const RunningApplication &application, int looksUntilQuit = 0,
             bool survivesForce = false)
    {
        processes.insert(application.processIdentifier,
                         {application, looksUntilQuit, survivesForce});
    }
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
        events.append(u"terminate %1"_s.arg(application.processIdentifier));
    }
    void forceTerminate(const RunningApplication &application) override
    {
        events.append(u"force %1"_s.arg(application.processIdentifier));
    }
    bool isTerminated(const RunningApplication &application) const override
    {
        const qint64 pid = application.processIdentifier;
        Process &process = processes[pid];
        if (events.contains(u"force %1"_s.arg(pid)))
            return !process.survivesForce;
        return events.contains(u"terminate %1"_s.arg(pid)) && process.looksUntilQuit >= 0 &&
               process.looksUntilQuit-- <= 0;
    }

    mutable QMap<qint64, Process> processes;
    QStringList events;
};

RunningApplication executableAt(qint64 pid, const QString &executable)
{
    return RunningApplication{pid, std::nullopt, std::nullopt, executable, 0};
}
} // namespace

class TestProcessService : public QObject
{
    Q_OBJECT

    std::shared_ptr<FakeApplications> m_applications;
    int m_sleeps = 0;

    std::optional<UninstallError> quit(const QString &bundle = u"/Applications/A.app"_s)
    {
        m_sleeps = 0;
        return ProcessService(
                   SystemLayout(u"/"_s),
                   ProcessService::Dependencies{m_applications, nullptr,
                                                [this](std::chrono::milliseconds duration) {
                                                    QCOMPARE(duration.count(), 500);
                                                    ++m_sleeps;
                                                }})
            .quitApp(u"com.example.a"_s, bundle);
    }

private slots:
    void init() { m_applications = std::make_shared<FakeApplications>(); }

    // Process 42, then 43 of the same app, which quits at once: asked only once 42 is gone.
    void quitPollsThenForces_data()
    {
        QTest::addColumn<int>("looksUntilQuit");
        QTest::addColumn<bool>("survivesForce");
        QTest::addColumn<int>("sleeps");
        QTest::addColumn<QString>("error");
        QTest::newRow("quits at once") << 0 << false << 0 << QString();
        QTest::newRow("quits after 1.2 s") << 3 << false << 3 << QString();
        QTest::newRow("quits at the last look") << 10 << false << 10 << QString();
        QTest::newRow("ignores terminate") << -1 << false << 11 << QString();
        QTest::newRow("survives force") << -1 << true << 11 << u"Failed to quit the application"_s;
    }

    void quitPollsThenForces()
    {
        QFETCH(int, looksUntilQuit);
        QFETCH(bool, survivesForce);
        QFETCH(int, sleeps);
        QFETCH(QString, error);
        m_applications->add(executableAt(42, kExecutable), looksUntilQuit, survivesForce);
        m_applications->add(executableAt(43, kExecutable));
        const auto result = quit();
        QCOMPARE(m_sleeps, sleeps);
        QCOMPARE(m_applications->events.contains(u"force 42"_s), looksUntilQuit < 0);
        QCOMPARE(result ? result->message() : QString(), error);
        QCOMPARE(m_applications->events.contains(u"terminate 43"_s), error.isEmpty());
    }

    void quitChoosesTheBundlesProcesses()
    {
        m_applications->add({10, u"com.example.a"_s, std::nullopt, std::nullopt, 0});
        m_applications->add(
            {11, std::nullopt, u"/Applications/A.app/Contents/Helpers/H.app"_s, std::nullopt, 0});
        m_applications->add(executableAt(12, u"/Applications/A.app/Contents/XPC/h"_s));
        m_applications->add(executableAt(13, u"/Applications/./A.app/Contents/MacOS/../MacOS/A"_s));
        // Not A's: a neighbour, another app, Quenzo itself, and a program below the bundle's
        // folder but not its code (what a bundle-shaped link may lead to).
        m_applications->add(executableAt(20, u"/Applications/A.app2/Contents/MacOS/A"_s));
        m_applications->add(executableAt(21, u"/Applications/B.app/Contents/MacOS/B"_s));
        m_applications->add(executableAt(1, u"/Applications/A.app/Contents/MacOS/quenzo"_s));
        m_applications->add(executableAt(22, u"/Applications/A.app/Other.app/Contents/MacOS/O"_s));
        QVERIFY(!quit(u"/Applications/A.app/"_s));
        QCOMPARE(m_applications->events, QStringList({u"terminate 10"_s, u"terminate 11"_s,
                                                      u"terminate 12"_s, u"terminate 13"_s}));
        for (const qint64 pid : {10, 11, 12, 13})
            m_applications->processes.remove(pid);
        QCOMPARE(quit().value_or(UninstallError::failedToQuitApp()).message(),
                 u"Application is not running"_s);
    }

    void runMergesAndTrimsOutput_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("output"); // "*": any text
        const QString sh = u"/bin/sh"_s;
        QTest::newRow("standard output") << sh << u"echo '  out  '"_s << 0 << u"out"_s;
        QTest::newRow("only standard error") << sh << u"echo oops >&2; exit 3"_s << 3 << u"oops"_s;
        QTest::newRow("both") << sh << u"echo a; echo b >&2"_s << 0 << u"a\nb"_s;
        QTest::newRow("not UTF-8") << sh << u"printf '\\377\\376'"_s << 0 << QString();
        QTest::newRow("more than a pipe holds")
            << sh << u"head -c 200000 /dev/zero | tr '\\0' x; echo"_s << 0 << QString(200000, u'x');
        QTest::newRow("tool that cannot start")
            << u"/nonexistent/tool"_s << QString() << -1 << u"*"_s;
    }

    void runMergesAndTrimsOutput()
    {
        QFETCH(QString, program);
        QFETCH(QString, script);
        QFETCH(int, status);
        QFETCH(QString, output);
        const ProcessOutput result =
            ProcessService(SystemLayout(u"/"_s)).run(program, {u"-c"_s, script});
        QCOMPARE(result.status, status);
        QVERIFY2(output == u"*" ? !result.output.isEmpty() : result.output == output,
                 qPrintable(result.output));
    }
};

QTEST_GUILESS_MAIN(TestProcessService)
#include "tst_ProcessService.moc"
