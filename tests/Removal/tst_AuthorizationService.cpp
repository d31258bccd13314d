// SPDX-License-Identifier: MIT
// The request for administrator rights: what reaches the helper, and what each outcome of the
// prompt makes of the items. The helper really runs (as the test's user, root in CI).
#include "Platform/HelperBatch.h"
#include "Platform/PrivilegedShell.h"
#include "Platform/SystemLayout.h"
#include "Removal/AuthorizationService.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "support/TemporaryFakeMac.h"

#include <QProcess>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(FakePrivilegedShell::Behaviour)

namespace {
// A helper that answers with the given bytes, whatever it was asked.
class AnsweringShell : public PrivilegedShell
{
public:
    explicit AnsweringShell(QByteArray answer) : m_answer(std::move(answer)) {}
    Result run(const QString &, const QStringList &, const QByteArray &) const override
    {
        return Result{Outcome::completed, {}, m_answer};
    }

private:
    QByteArray m_answer;
};
} // namespace

class TestAuthorizationService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;

    // "/..." and "~/..." are Mac paths, "@..." a path as is, anything else a Trash name.
    QString resolved(const QString &text) const
    {
        if (text.startsWith(u'@'))
            return text.mid(1);
        if (text.startsWith(u'/') || text.startsWith(u'~'))
            return m_mac->path(text);
        return text.isEmpty() ? m_mac->home() + u"/.Trash"_s : m_mac->trash(text);
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
    }

    void cleanup() { m_mac.reset(); }

    // Only what the policy allows is ever sent: moves between an allowed place and directly
    // inside the Trash, boot-outs of allowed plists, forgets of valid identifiers.
    void onlyVettedCommandsAreSent_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("destination");
        QTest::addColumn<bool>("sent");
        const QString allowed = u"/Library/Application Support/Example"_s;
        QTest::newRow("allowed") << u"move"_s << allowed << u"Example"_s << true;
        QTest::newRow("back from the Trash") << u"move"_s << u"Example"_s << allowed << true;
        QTest::newRow("outside allowed roots")
            << u"move"_s << u"/usr/local/bin/x"_s << u"x"_s << false;
        QTest::newRow("the user's cache folder itself")
            << u"move"_s << u"~/Library/Caches"_s << u"Caches"_s << false;
        QTest::newRow("another user's home sharing the name's start")
            << u"move"_s << u"/Users/tester2/Library/Caches/x"_s << u"x"_s << false;
        QTest::newRow("newline in source")
            << u"move"_s << u"/Library/Application Support/a\nb"_s << u"ab"_s << false;
        QTest::newRow("newline in destination") << u"move"_s << allowed << u"Exa\nmple"_s << false;
        QTest::newRow("into a Trash subfolder") << u"move"_s << allowed << u"sub/x"_s << false;
        QTest::newRow("destination with ..") << u"move"_s << allowed << u"../x"_s << false;
        QTest::newRow("destination is the Trash") << u"move"_s << allowed << u""_s << false;
        QTest::newRow("outside the Trash") << u"move"_s << allowed << u"/Library/x"_s << false;
        QTest::newRow("relative destination") << u"move"_s << allowed << u"@rel/x"_s << false;
        QTest::newRow("daemon") << u"bootout"_s << u"/Library/LaunchDaemons/a.plist"_s << QString()
                                << true;
        QTest::newRow("daemon elsewhere")
            << u"bootout"_s << u"/usr/lib/a.plist"_s << QString() << false;
        QTest::newRow("package") << u"forget"_s << u"com.example.ok"_s << QString() << true;
        QTest::newRow("Apple's package")
            << u"forget"_s << u"com.apple.pkg.Core"_s << QString() << false;
        QTest::newRow("package with a blank") << u"forget"_s << u"x y"_s << QString() << false;
        QTest::newRow("package like an option") << u"forget"_s << u"-x"_s << QString() << false;
    }

    void onlyVettedCommandsAreSent()
    {
        QFETCH(QString, kind);
        QFETCH(QString, item);
        QFETCH(QString, destination);
        QFETCH(bool, sent);
        QList<AuthorizationService::Move> moves;
        QStringList plists, packages;
        if (kind == u"move")
            moves.append({resolved(item), resolved(destination)});
        else
            (kind == u"bootout" ? plists : packages)
                .append(kind == u"bootout" ? resolved(item) : item);
        const auto commands = AuthorizationService::commands(moves, plists, packages);
        QCOMPARE(commands.size(), sent ? 1 : 0);
        if (sent)
            QCOMPARE(commands.first().word, kind.toUtf8());
    }

    // Every outcome of the prompt, and a helper that others could have changed (never run,
    // no prompt shown).
    void promptOutcomes_data()
    {
        QTest::addColumn<FakePrivilegedShell::Behaviour>("behaviour");
        QTest::addColumn<bool>("helperTrusted");
        QTest::addColumn<QString>("message");
        using B = FakePrivilegedShell::Behaviour;
        QTest::newRow("ran") << B::runAsCaller << true << QString();
        QTest::newRow("cancelled")
            << B::cancel << true << u"Administrator permission was canceled"_s;
        QTest::newRow("failed") << B::fail << true
                                << u"Failed to remove files with admin privileges: "_s +
                                       FakePrivilegedShell::failureMessage();
        QTest::newRow("helper writable by others") << B::runAsCaller << false << u"Refused"_s;
    }

    void promptOutcomes()
    {
        QFETCH(FakePrivilegedShell::Behaviour, behaviour);
        QFETCH(bool, helperTrusted);
        QFETCH(QString, message);
        QString helper = FakePrivilegedShell::helper();
        if (!helperTrusted) {
            helper = m_mac->path(u"/helper"_s);
            QVERIFY(QFile::copy(FakePrivilegedShell::helper(), helper));
            QVERIFY(QFile::setPermissions(helper,
                                          QFile::permissions(helper) | QFileDevice::WriteOther));
        }
        auto shell = std::make_shared<FakePrivilegedShell>(behaviour);
        const QString source = m_mac->addTextFile(u"/Library/Caches/x"_s, "x");
        QDir().mkpath(resolved({}));
        const auto report = AuthorizationService(shell, helper)
                                .removeWithAdminPrivileges({{source, resolved(u"x"_s)}}, {}, {});
        QVERIFY(report.error ? report.error->message().contains(message) : message.isEmpty());
        QCOMPARE(shell->batches().size(), helperTrusted ? 1 : 0);
        QCOMPARE(QFileInfo::exists(source), !message.isEmpty());
        QCOMPARE(report.moves.value(QFile::encodeName(source)).word,
                 message.isEmpty() ? "moved"_ba : QByteArray());
    }

    // Two moves, A then B: only an answer of one result per command, each about its own
    // command's item, is believed.
    void answersAreCheckedAgainstTheCommands_data()
    {
        QTest::addColumn<QByteArrayList>("answer"); // "A" and "B" stand for the two items
        QTest::addColumn<bool>("readable");
        QTest::addColumn<int>("believed");
        QTest::newRow("one per command") << QByteArrayList{"A", "B"} << true << 2;
        QTest::newRow("too few") << QByteArrayList{"A"} << false << 0;
        QTest::newRow("too many") << QByteArrayList{"A", "B", "B"} << false << 0;
        QTest::newRow("each about the other item") << QByteArrayList{"B", "A"} << true << 0;
    }

    void answersAreCheckedAgainstTheCommands()
    {
        QFETCH(QByteArrayList, answer);
        QFETCH(bool, readable);
        QFETCH(int, believed);
        const QString a = m_mac->addTextFile(u"/Library/Caches/a"_s, "a");
        const QString b = m_mac->addTextFile(u"/Library/Caches/b"_s, "b");
        QList<HelperRecord> records;
        for (const QByteArray &item : answer)
            records.append(HelperRecord{"done", {QFile::encodeName(item == "A" ? a : b)}});
        const auto shell = std::make_shared<AnsweringShell>(HelperBatch::encode(records));
        const auto report =
            AuthorizationService(shell, FakePrivilegedShell::helper())
                .removeWithAdminPrivileges({{a, resolved(u"a"_s)}, {b, resolved(u"b"_s)}}, {}, {});
        QCOMPARE(!report.error, readable);
        QCOMPARE(report.moves.size(), believed);
    }

    // The helper's own checks, whatever asked it: one move of ROOT/Library/Caches/NAME into
    // the Trash, answered "moved" (to "~/.Trash/...") or "failed" (with the reason).
    void helperChecksEachMove_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("otherUser"); // the helper acts for a user who owns no home here
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("name that is not UTF-8")
            << "w\xff"_ba << false << "The name is not valid UTF-8"_ba;
        QTest::newRow("home of another user")
            << "x"_ba << true << "The home folder does not belong to the user"_ba;
        QTest::newRow("hidden name taken in the Trash") << ".x"_ba << false << "~/.Trash/.x 2"_ba;
    }

    void helperChecksEachMove()
    {
        QFETCH(QByteArray, name);
        QFETCH(bool, otherUser);
        QFETCH(QByteArray, answer);
        m_mac->addTextFile(u"/Library/Caches/x"_s, "x");
        m_mac->addTextFile(u"/Library/Caches/.x"_s, "x");
        m_mac->addTextFile(u"~/.Trash/.x"_s, "older");
        const QByteArray home = QFile::encodeName(m_mac->home());
        const QByteArray source = QFile::encodeName(m_mac->path(u"/Library/Caches/"_s)) + name;
        const QByteArray batch =
            HelperBatch::encode(HelperRecord{"move", {source, home + "/.Trash/" + name}});
        QProcess helper;
        helper.start(FakePrivilegedShell::helper(),
                     {u"--root"_s, m_mac->root(), u"--home"_s, m_mac->home(), u"--user"_s,
                      QString::number(otherUser ? 65534 : ::getuid()), u"--batch-sha256"_s,
                      QString::fromLatin1(AuthorizationService::batchDigest(batch))});
        helper.write(batch);
        helper.closeWriteChannel();
        QVERIFY(helper.waitForFinished());
        const auto results = HelperBatch::parseResults(helper.readAllStandardOutput());
        QVERIFY(results && results->size() == 1);
        QCOMPARE(results->first().fields.value(1).replace(home, "~"), answer);
    }

    void nothingToRunShowsNoPrompt()
    {
        auto shell = std::make_shared<FakePrivilegedShell>();
        const AuthorizationService service(shell, FakePrivilegedShell::helper());
        QVERIFY(!service.removeWithAdminPrivileges({}, {}, {}).error);
        QVERIFY(!service
                     .removeWithAdminPrivileges({{u"/etc/passwd"_s, resolved(u"passwd"_s)}},
                                                {u"/etc/x.plist"_s}, {u"com.apple.pkg.X"_s})
                     .error);
        QVERIFY(shell->batches().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAuthorizationService)
#include "tst_AuthorizationService.moc"
