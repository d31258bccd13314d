// SPDX-License-Identifier: MIT
// What goes between Quenzo and its privileged helper: the batch of records (one spelling, and
// nothing read from a batch that is not wholly well-formed) and, on macOS, the shell that starts
// the helper, driven here through a stand-in for osascript that prints what the real one prints.
#include "Platform/HelperBatch.h"
#include "Platform/OsascriptShell.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(PrivilegedShell::Outcome)

class TestHelperBatch : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    // Runs the shell through a stand-in that keeps its arguments (NUL-separated) in the file
    // "arguments", prints `output` on standard error and exits with `status`; with `status` -1
    // there is no program at all.
    PrivilegedShell::Result run(const QByteArray &output, int status, const QStringList &words)
    {
        const QString program =
            m_dir.filePath(status < 0 ? u"missing/osascript"_s : u"osascript"_s);
        QFile script(program);
        if (status >= 0 &&
            (!script.open(QIODevice::WriteOnly) ||
             script.write("#!/bin/sh\nprintf '%s\\0' \"$@\" > \"$0.arguments\"\nprintf '%s' '" +
                          output + "' >&2\nexit " + QByteArray::number(status) + "\n") < 0 ||
             !script.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner)))
            qFatal("cannot write the stand-in");
        script.close();
        return OsascriptShell(program).run(words.first(), words.mid(1), "batch"_ba);
    }

    static QStringList splitAtNul(const QByteArray &bytes)
    {
        QStringList words = QString::fromUtf8(bytes).split(QChar(u'\0'));
        words.removeLast(); // after the last NUL
        return words;
    }

private slots:
    void parses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("results"); // read as the helper's answer, else as its commands
        QTest::addColumn<int>("records");  // -1: refused
        QTest::newRow("nothing") << QByteArray() << false << 0;
        QTest::newRow("every command word")
            << QByteArray("bootout 3:a.b\nforget 1:x\nmove 1:a 1:b\n") << false << 3;
        QTest::newRow("every result word")
            << QByteArray("done 1:x\nmoved 1:a 1:b\nfailed 1:x 3:why\n") << true << 3;
        QTest::newRow("field holding a line break and a blank")
            << QByteArray("forget 3:a\n \n") << false << 1;
        QTest::newRow("unknown word") << QByteArray("remove 1:x\n") << false << -1;
        QTest::newRow("a result word as a command") << QByteArray("done 1:x\n") << false << -1;
        QTest::newRow("a command word as a result") << QByteArray("move 1:a 1:b\n") << true << -1;
        QTest::newRow("length with a leading zero") << QByteArray("forget 01:x\n") << false << -1;
        QTest::newRow("field missing") << QByteArray("move 1:a\n") << false << -1;
        QTest::newRow("no final line break") << QByteArray("forget 1:x") << false << -1;
        QTest::newRow("stray byte after a record") << QByteArray("forget 1:xy\n") << false << -1;
        QTest::newRow("length past the end") << QByteArray("forget 9:x\n") << false << -1;
        QTest::newRow("field over the limit")
            << QByteArray("forget 1048577:") + QByteArray(1048577, 'x') + '\n'
            << false << -1;
    }
    void parses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, results);
        QFETCH(int, records);
        const auto parsed =
            results ? HelperBatch::parseResults(bytes) : HelperBatch::parseCommands(bytes);
        QCOMPARE(parsed ? int(parsed->size()) : -1, records);
    }

    // Any bytes in any field come back as they went.
    void encodedRecordsReadBack()
    {
        const QList<HelperRecord> records{{"move", {QByteArray("/a b\n\xff", 6), QByteArray()}},
                                          {"forget", {QByteArray(300, ':')}},
                                          {"bootout", {QByteArray("x\0y", 3)}}};
        QVERIFY(HelperBatch::parseCommands(HelperBatch::encode(records)) == records);
    }

    void outcomes_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("status"); // -1: no osascript
        QTest::addColumn<PrivilegedShell::Outcome>("outcome");
        QTest::addColumn<QString>("message");
        using O = PrivilegedShell::Outcome;
        QTest::newRow("ran, with a result") << "\n"_ba << 0 << O::completed << QString();
        QTest::newRow("dismissed, after other lines")
            << "note\n0:312: execution error: User canceled. (-128)\n"_ba << 1 << O::canceled
            << QString();
        QTest::newRow("another error")
            << "0:312: execution error: The administrator user name or password was incorrect. "
               "(-60007)\n"_ba
            << 1 << O::failed << u"The administrator user name or password was incorrect."_s;
        QTest::newRow("-128 only inside the message")
            << "0:312: execution error: mv: Data (-128) (-2700)\n"_ba << 1 << O::failed
            << u"mv: Data (-128)"_s;
        QTest::newRow("text of another form")
            << "osascript: no such thing\n"_ba << 1 << O::failed << u"osascript: no such thing"_s;
        QTest::newRow("silent failure") << QByteArray() << 3 << O::failed << u"exit status 3"_s;
        QTest::newRow("no osascript") << QByteArray() << -1 << O::failed << u"*"_s;
    }
    void outcomes()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, status);
        QFETCH(PrivilegedShell::Outcome, outcome);
        QFETCH(QString, message);
        const auto result = run(output, status, {u"/helper"_s});
        QCOMPARE(result.outcome, outcome);
        if (message == u"*")
            QVERIFY(!result.message.isEmpty());
        else
            QCOMPARE(result.message, message);
    }

    // The helper's words go through an AppleScript literal and then a shell: whatever they
    // hold, the shell must hand exactly them to the program, and the batch file comes last.
    void wordsSurviveTheScriptAndTheShell()
    {
        const QStringList words{u"/A b/quenzo-privileged-helper"_s, u"--root"_s,
                                u"/it's \\ \"dq\" $(x) `y` ; z"_s, u"-n"_s, u"Ünïcødé"_s};
        QCOMPARE(run({}, 0, words).outcome, PrivilegedShell::Outcome::completed);
        QFile recorded(m_dir.filePath(u"osascript.arguments"_s));
        QVERIFY(recorded.open(QIODevice::ReadOnly));
        const QStringList arguments = splitAtNul(recorded.readAll());
        QCOMPARE(arguments.size(), 2);
        const QString opening = u"do shell script \""_s;
        const QString closing = u"\" with administrator privileges without altering line endings"_s;
        const QString script = arguments.at(1);
        QVERIFY(script.startsWith(opening) && script.endsWith(closing));
        QString line; // read back as osascript does: \\ is one backslash, \" a quote
        for (qsizetype i = opening.size(); i < script.size() - closing.size(); ++i) {
            QVERIFY2(script.at(i) != u'"', "an unescaped quote ends the literal early");
            line.append(script.at(script.at(i) == u'\\' ? ++i : i));
        }
        QProcess shell;
        shell.start(u"/bin/sh"_s, {u"-c"_s, u"printf '%s\\0' "_s + line});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(splitAtNul(shell.readAllStandardOutput()).mid(0, words.size() + 1),
                 words + QStringList{u"--batch"_s});
    }
};

QTEST_GUILESS_MAIN(TestHelperBatch)
#include "tst_HelperBatch.moc"
