// SPDX-License-Identifier: MIT
// The macOS privileged shell, driven here through a stand-in for osascript that prints what the
// real one prints.
#include "Platform/OsascriptShell.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(PrivilegedShell::Outcome)

class TestOsascriptShell : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    // A stand-in that records its arguments (NUL-separated), prints `output` on standard error
    // and exits with `status`.
    QString standIn(const QByteArray &output, int status)
    {
        QFile printed(m_dir->filePath(u"output"_s));
        if (!printed.open(QIODevice::WriteOnly) || printed.write(output) != output.size())
            qFatal("cannot write the stand-in's output");
        const QString program = m_dir->filePath(u"osascript"_s);
        QFile script(program);
        if (!script.open(QIODevice::WriteOnly))
            qFatal("cannot write the stand-in");
        script.write("#!/bin/sh\ncd \"$(dirname \"$0\")\"\nprintf '%s\\0' \"$@\" > arguments\n"
                     "cat output >&2\nexit " +
                     QByteArray::number(status) + "\n");
        script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                              QFileDevice::ExeOwner);
        return program;
    }

    QStringList recordedArguments() const
    {
        QFile file(m_dir->filePath(u"arguments"_s));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList arguments = QString::fromUtf8(file.readAll()).split(QChar(u'\0'));
        arguments.removeLast(); // after the last NUL
        return arguments;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void outcomes_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("status");
        QTest::addColumn<PrivilegedShell::Outcome>("outcome");
        QTest::addColumn<QString>("message");
        using O = PrivilegedShell::Outcome;
        QTest::newRow("ran") << QByteArray() << 0 << O::completed << QString();
        QTest::newRow("ran, with a result") << "\n"_ba << 0 << O::completed << QString();
        QTest::newRow("dismissed") << "0:312: execution error: User canceled. (-128)\n"_ba << 1
                                   << O::canceled << QString();
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
    }

    void outcomes()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, status);
        QFETCH(PrivilegedShell::Outcome, outcome);
        QFETCH(QString, message);
        const auto result = OsascriptShell(standIn(output, status)).run(u"/helper"_s, {}, {});
        QCOMPARE(result.outcome, outcome);
        QCOMPARE(result.message, message);
    }

    // The helper's words go through an AppleScript literal and then a shell: whatever they
    // hold, the shell must hand exactly them to the program, and the batch file comes last.
    void wordsSurviveTheScriptAndTheShell()
    {
        const QStringList words{u"/A b/quenzo-privileged-helper"_s, u"--root"_s,
                                u"/it's \\ \"dq\" $(x) `y` ; z"_s, u"-n"_s, u"Ünïcødé"_s};
        const auto result =
            OsascriptShell(standIn({}, 0)).run(words.first(), words.mid(1), "batch"_ba);
        QCOMPARE(result.outcome, PrivilegedShell::Outcome::completed);
        const QStringList arguments = recordedArguments();
        QCOMPARE(arguments.size(), 2);
        const QString opening = u"do shell script \""_s;
        const QString closing = u"\" with administrator privileges without altering line endings"_s;
        QVERIFY(arguments.at(1).startsWith(opening) && arguments.at(1).endsWith(closing));
        const QString body = arguments.at(1).mid(
            opening.size(), arguments.at(1).size() - opening.size() - closing.size());
        QString line; // read back as osascript does: \\ is one backslash, \" a quote
        for (qsizetype i = 0; i < body.size(); ++i) {
            QVERIFY2(body.at(i) != u'"', "an unescaped quote ends the literal early");
            if (body.at(i) == u'\\' && i + 1 < body.size())
                ++i;
            line.append(body.at(i));
        }
        QProcess shell;
        shell.start(u"/bin/sh"_s, {u"-c"_s, u"printf '%s\\0' "_s + line});
        QVERIFY(shell.waitForFinished());
        QStringList heard = QString::fromUtf8(shell.readAllStandardOutput()).split(QChar(u'\0'));
        heard.removeLast();
        QCOMPARE(heard.mid(0, words.size()), words);
        QCOMPARE(heard.value(words.size()), u"--batch"_s);
    }

    void missingProgramFails()
    {
        const auto result =
            OsascriptShell(m_dir->filePath(u"missing/osascript"_s)).run(u"/helper"_s, {}, {});
        QCOMPARE(result.outcome, PrivilegedShell::Outcome::failed);
        QVERIFY(!result.message.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestOsascriptShell)
#include "tst_OsascriptShell.moc"
