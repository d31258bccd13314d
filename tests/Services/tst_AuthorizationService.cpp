// SPDX-License-Identifier: MIT
#include "Platform/SystemLayout.h"
#include "Services/AuthorizationService.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "support/TemporaryFakeMac.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using Move = AuthorizationService::Move;

// Reads an AppleScript string literal back the way osascript does: \\ is one backslash, \" a
// double quote.
QString appleScriptLiteral(const QString &source)
{
    const QString opening = u"do shell script \""_s;
    const QString closing = u"\" with administrator privileges"_s;
    if (!source.startsWith(opening) || !source.endsWith(closing))
        return {};
    const QString body =
        source.mid(opening.size(), source.size() - opening.size() - closing.size());
    QString text;
    for (qsizetype i = 0; i < body.size(); ++i) {
        if (body.at(i) == u'\\' && i + 1 < body.size())
            ++i;
        else if (body.at(i) == u'"')
            return {}; // an unescaped quote would end the literal early
        text.append(body.at(i));
    }
    return text;
}

// What /bin/sh makes of one quoted word.
QString shellWord(const QString &quoted)
{
    QProcess shell;
    shell.start(u"/bin/sh"_s, {u"-c"_s, u"printf '%s' "_s + quoted});
    shell.waitForFinished();
    return QString::fromUtf8(shell.readAllStandardOutput());
}
} // namespace

Q_DECLARE_METATYPE(FakePrivilegedShell::Behaviour)
Q_DECLARE_METATYPE(std::optional<AuthorizationError>)

class TestAuthorizationService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;

    QString path(const QString &macPath) const { return m_mac->path(macPath); }
    QString trash(const QString &name) const { return m_mac->trash(name); }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
        QDir::setCurrent(m_mac->root());
    }

    void cleanup()
    {
        QDir::setCurrent(QDir::tempPath());
        m_mac.reset();
    }

    void quotingKeepsEveryCharacter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("quoted");
        QTest::newRow("plain") << u"/Library/Caches/x"_s << u"'/Library/Caches/x'"_s;
        QTest::newRow("quote") << u"it's"_s << u"'it'\\''s'"_s;
        QTest::newRow("two quotes") << u"''"_s << u"''\\'''\\'''"_s;
    }

    void quotingKeepsEveryCharacter()
    {
        QFETCH(QString, text);
        QFETCH(QString, quoted);
        QCOMPARE(AuthorizationService::shellQuoted(text), quoted);
        QCOMPARE(shellWord(quoted), text);
    }

    void commandsInFixedOrderAndExactText()
    {
        const QString daemon = path(u"/Library/LaunchDaemons/com.example.helper.plist"_s);
        const QString source = path(u"/Library/Application Support/Example's"_s);
        const QStringList commands = AuthorizationService::commands(
            {{source, trash(u"Example's"_s)}}, {daemon}, {u"com.example.pkg"_s});
        QCOMPARE(commands, QStringList({
                               path(u"/bin/launchctl"_s) + u" bootout system '"_s + daemon +
                                   u"' >/dev/null 2>&1"_s,
                               path(u"/usr/sbin/pkgutil"_s) +
                                   u" --forget 'com.example.pkg' >/dev/null 2>&1"_s,
                               path(u"/bin/mv"_s) + u" -n -- '"_s +
                                   path(u"/Library/Application Support/Example'\\''s"_s) +
                                   u"' '"_s + trash(u"Example'\\''s"_s) + u"'"_s,
                           }));
        QCOMPARE(AuthorizationService::commandLine(commands),
                 commands.join(u"; "_s) + u"; exit 0"_s);
    }

    void toolsUnderAFolderWithBlanksAreQuoted()
    {
        QTemporaryDir spaced(QDir::tempPath() + u"/fake mac $(x)-XXXXXX"_s);
        FakeMac mac(spaced.path());
        mac.activate();
        const QStringList commands = AuthorizationService::commands({}, {}, {u"com.example.pkg"_s});
        QCOMPARE(commands.size(), 1);
        QVERIFY2(commands.first().startsWith(u'\'' + mac.path(u"/usr/sbin/pkgutil"_s) + u'\''),
                 qPrintable(commands.first()));
    }

    void policyDropsItems_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("destination");
        QTest::addColumn<bool>("kept");
        const QString allowed = u"/Library/Application Support/Example"_s;
        QTest::newRow("allowed") << allowed << u"Example"_s << true;
        QTest::newRow("outside allowed roots") << u"/usr/local/bin/tool"_s << u"tool"_s << false;
        QTest::newRow("newline in source")
            << u"/Library/Application Support/a\nb"_s << u"ab"_s << false;
        QTest::newRow("newline in destination") << allowed << u"Exa\nmple"_s << false;
        QTest::newRow("destination in a Trash subfolder") << allowed << u"sub/Example"_s << false;
        QTest::newRow("destination with ..") << allowed << u"../Example"_s << false;
        QTest::newRow("destination with trailing slash") << allowed << u"Example/"_s << false;
        QTest::newRow("destination is the Trash") << allowed << u""_s << false;
        QTest::newRow("destination outside the Trash") << allowed << u"/Library/Example"_s << false;
        QTest::newRow("destination in the home") << allowed << u"~/Example"_s << false;
        QTest::newRow("relative destination") << allowed << u"@relative/Example"_s << false;
    }

    void policyDropsItems()
    {
        QFETCH(QString, source);
        QFETCH(QString, destination);
        QFETCH(bool, kept);
        // "/..." and "~/..." are Mac paths, "@..." a path as is, anything else a Trash name.
        const QString realDestination = destination.isEmpty() ? m_mac->home() + u"/.Trash"_s
                                        : destination.startsWith(u'@') ? destination.mid(1)
                                        : QStringLiteral("/~").contains(destination.at(0))
                                            ? path(destination)
                                            : trash(destination);
        const QStringList commands =
            AuthorizationService::commands({{path(source), realDestination}}, {}, {});
        QCOMPARE(commands.size(), kept ? 1 : 0);
    }

    void daemonsAndPackagesAreVetted()
    {
        const QStringList commands = AuthorizationService::commands(
            {}, {path(u"/usr/lib/evil.plist"_s), path(u"/Library/LaunchDaemons/a.plist"_s)},
            {u"com.apple.pkg.Core"_s, u"x; rm -rf ~"_s, u"-flag"_s, u""_s, u"com.example.ok"_s});
        QCOMPARE(commands.size(), 2);
        QVERIFY(commands.at(0).contains(u"/Library/LaunchDaemons/a.plist'"_s));
        QVERIFY(commands.at(1).contains(u"--forget 'com.example.ok'"_s));
    }

    void appleScriptSourceEscapesBackslashesThenQuotes()
    {
        QCOMPARE(AuthorizationService::appleScriptSource(u"mv -n -- 'it'\\''s' \"x\""_s),
                 u"do shell script \"mv -n -- 'it'\\\\''s' \\\"x\\\"\" with administrator "
                 u"privileges"_s);
        const QString line = AuthorizationService::commandLine(AuthorizationService::commands(
            {{path(u"/Library/Application Support/a\\\"b'c"_s), trash(u"a\\\"b'c"_s)}}, {}, {}));
        QCOMPARE(appleScriptLiteral(AuthorizationService::appleScriptSource(line)), line);
    }

    void nothingToRunShowsNoPrompt()
    {
        auto shell = std::make_shared<FakePrivilegedShell>();
        const AuthorizationService service(shell);
        QVERIFY(!service.removeWithAdminPrivileges({}, {}, {}));
        QVERIFY(!service.removeWithAdminPrivileges({{u"/etc/passwd"_s, trash(u"passwd"_s)}},
                                                   {u"/etc/x.plist"_s}, {u"com.apple.pkg.X"_s}));
        QVERIFY(shell->lines().isEmpty());
    }

    void shellOutcomeBecomesTheError_data()
    {
        QTest::addColumn<FakePrivilegedShell::Behaviour>("behaviour");
        QTest::addColumn<std::optional<AuthorizationError>>("error");
        QTest::addColumn<QString>("message");
        QTest::newRow("ran") << FakePrivilegedShell::Behaviour::runAsCaller
                             << std::optional<AuthorizationError>() << QString();
        QTest::newRow("cancelled") << FakePrivilegedShell::Behaviour::cancel
                                   << std::optional(AuthorizationError::userCanceled())
                                   << u"Administrator permission was canceled"_s;
        QTest::newRow("failed") << FakePrivilegedShell::Behaviour::fail
                                << std::optional(AuthorizationError::deletionFailed(
                                       FakePrivilegedShell::failureMessage()))
                                << u"Failed to remove files with admin privileges: "_s +
                                       FakePrivilegedShell::failureMessage();
    }

    void shellOutcomeBecomesTheError()
    {
        QFETCH(FakePrivilegedShell::Behaviour, behaviour);
        QFETCH(std::optional<AuthorizationError>, error);
        QFETCH(QString, message);
        auto shell = std::make_shared<FakePrivilegedShell>(behaviour);
        const QString source = m_mac->addTextFile(u"/Library/Caches/x"_s, "x");
        const auto result = AuthorizationService(shell).removeWithAdminPrivileges(
            {{source, trash(u"x"_s)}}, {}, {});
        QVERIFY(result == error);
        QCOMPARE(result ? result->message() : QString(), message);
        QCOMPARE(shell->lines().size(), 1);
        QCOMPARE(shell->appleScripts().constFirst(),
                 AuthorizationService::appleScriptSource(shell->lines().constFirst()));
        QCOMPARE(QFileInfo::exists(source), bool(error));
    }

    // The whole line through a real shell: every hostile name arrives whole, nothing runs.
    void hostileNamesAreNeverExecuted()
    {
        const QStringList names{u"it's"_s,
                                u"$(touch pwned)"_s,
                                u"`touch pwned`"_s,
                                u"a;touch pwned"_s,
                                u"back\\slash"_s,
                                u"two  blanks "_s,
                                u"Ünïcødé"_s,
                                u"-n"_s,
                                u"\"dq\" && touch pwned"_s};
        QList<Move> moves;
        for (const QString &name : names)
            moves.append(
                {m_mac->addTextFile(u"/Library/Caches/"_s + name, name.toUtf8()), trash(name)});
        auto shell = std::make_shared<FakePrivilegedShell>();
        QVERIFY(!AuthorizationService(shell).removeWithAdminPrivileges(moves, {}, {}));
        QCOMPARE(appleScriptLiteral(shell->appleScripts().constFirst()),
                 shell->lines().constFirst());
        for (const QString &name : names) {
            QFile moved(trash(name));
            QVERIFY2(moved.open(QIODevice::ReadOnly), qPrintable(name));
            QCOMPARE(moved.readAll(), name.toUtf8());
        }
        QVERIFY(!QFileInfo::exists(m_mac->root() + u"/pwned"_s));
    }

    void moveNeverReplacesAnItem()
    {
        const QString source = m_mac->addTextFile(u"/Library/Caches/x"_s, "new");
        const QString taken = m_mac->addTextFile(u"~/.Trash/x"_s, "old");
        auto shell = std::make_shared<FakePrivilegedShell>();
        QVERIFY(!AuthorizationService(shell).removeWithAdminPrivileges({{source, taken}}, {}, {}));
        QFile kept(taken);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), QByteArray("old"));
        QVERIFY(QFileInfo::exists(source));
    }
};

QTEST_GUILESS_MAIN(TestAuthorizationService)
#include "tst_AuthorizationService.moc"
