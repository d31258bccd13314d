// SPDX-License-Identifier: MIT
// What may reach root: the path policy; the request for administrator rights: what reaches the
// helper, and what each outcome of the prompt makes of the items; then reading back uninstall
// records, also ones an interrupted run left, and putting their items back with the user's rights
// and with one privileged run. The helper really runs (as the test's user, root in CI).
#include "Platform/HelperBatch.h"
#include "Platform/PrivilegedShell.h"
#include "Platform/SystemLayout.h"
#include "Removal/AdminPathPolicy.h"
#include "Removal/AuthorizationService.h"
#include "Removal/RestoreRun.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "fakemac/TreeFingerprint.h"
#include "support/TemporaryFakeMac.h"

#include <QProcess>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using Outcome = RestoreRun::Outcome;
using State = UninstallRecord::State;
using Behaviour = FakePrivilegedShell::Behaviour;

Q_DECLARE_METATYPE(RestoreRun::Outcome)

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

    std::unique_ptr<TemporaryFakeMac> m_mac;
    std::shared_ptr<FakePrivilegedShell> m_shell;

    // An item moved to the Trash as the uninstall would have (through the privileged helper
    // for an administrator's item), recorded as moved.
    UninstallRecord::Item moved(const QString &macPath, bool admin)
    {
        const QString original = m_mac->addTextFile(macPath, macPath.toUtf8());
        QString trash = m_mac->trash(QFileInfo(original).fileName());
        QDir().mkpath(QFileInfo(trash).path());
        if (admin) {
            const AuthorizationService helper(m_mac->layout(),
                                              std::make_shared<FakePrivilegedShell>(),
                                              FakePrivilegedShell::helper());
            const auto report = helper.removeWithAdminPrivileges({{original, trash}}, {}, {});
            const HelperRecord record = report.moves.value(QFile::encodeName(original));
            if (record.word != "moved")
                return {};
            trash = QFile::decodeName(record.fields.at(1));
        } else if (!QFile::rename(original, trash)) {
            return {};
        }
        UninstallRecord::Item item;
        item.path = QFile::encodeName(original);
        item.trashPath = QFile::encodeName(trash);
        item.withAdminRights = admin;
        item.state = State::moved;
        return item;
    }

    RestoreRun::Report restore(const QList<UninstallRecord::Item> &items,
                               Behaviour behaviour = Behaviour::runAsCaller)
    {
        UninstallRecord record;
        record.items = items;
        m_shell = std::make_shared<FakePrivilegedShell>(behaviour);
        return RestoreRun(m_mac->layout(),
                          {nullptr,
                           RestoreMover::adminRights(std::make_shared<AuthorizationService>(
                               m_mac->layout(), m_shell, FakePrivilegedShell::helper())),
                           nullptr})
            .run(record);
    }

    static QByteArray header()
    {
        QList<UninstallRecord::Item> items(3);
        items[0].path = "/a";
        items[1].path = "/b\xff\xfe name"; // not valid UTF-8
        items[2].path = "/c";
        items[2].packageID = u"com.acme.pkg"_s;
        return UninstallRecord::headerLine(QDateTime::currentDateTimeUtc(), items);
    }

    // "/..." and "~/..." are Mac paths, "@..." a path as is, anything else a Trash name.
    QString resolved(const QString &text) const
    {
        if (text.startsWith(u'@'))
            return text.mid(1);
        if (text.startsWith(u'/') || text.startsWith(u'~'))
            return m_mac->path(text);
        return text.isEmpty() ? m_mac->home() + u"/.Trash"_s : m_mac->trash(text);
    }

    // The policy of the fake Mac as `user` sees it; it reads the per-user folders below when it
    // is made.
    AdminPathPolicy policy(const QString &user = u"tester"_s) const
    {
        return AdminPathPolicy(SystemLayout(m_mac->root(), m_mac->root() + u"/Users/"_s + user));
    }

    // One per line, each as resolved().
    void writeDarwinDirectories(const QStringList &lines) const
    {
        QByteArray text;
        for (const QString &line : lines)
            text += resolved(line).toUtf8() + '\n';
        m_mac->addTextFile(u"/.fakemac/darwin-user-dirs"_s, text);
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
        m_mac->setDarwinUserDirectories(u"/private/var/folders/ab/xyz/C"_s,
                                        u"/private/var/folders/ab/xyz/T"_s);
    }

    void cleanup() { m_mac.reset(); }

    void isAllowed_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("allowed");
        const auto rows = [](bool allowed, std::initializer_list<const char *> paths) {
            for (const char *path : paths)
                QTest::newRow(path) << QString::fromUtf8(path) << allowed;
        };
        // The shape of the text; allowed roots themselves, and depth; denied roots and their
        // children win over the allowed ones, whatever the case; outside every root; the per-user
        // cache and temporary folders: entries inside, not the folders themselves.
        rows(true, {"/Applications/Foo.app", "/Applications/..Foo.app",
                    "/Applications/Foo.app/Contents/Info.plist", "~/Applications/Foo.app",
                    "~/Library/Caches/com.example.app", "/Library/Application Support/Example",
                    "/Library/LaunchDaemons/com.example.daemon.plist",
                    "/Library/Screen Savers/Example.saver", "~/Library/MailExample/x",
                    "/Library/Application Support/AppleExample",
                    "/private/var/folders/ab/xyz/C/com.example.app",
                    "/private/var/folders/ab/xyz/T/com.example.app"});
        rows(false, {"@Applications/Foo.app", "@", "/Applications/Foo.app/",
                     "/Applications//Foo.app", "/Applications/./Foo.app", "/Applications/../etc/x",
                     "/Applications/Foo.app/..", "/Applications"});
        rows(false, {"~/Applications", "~/Library", "~/Library/Caches", "~/Library2/Caches/x",
                     "/Users/tester2/Library/Caches/x", "~/Documents/report.pdf", "~",
                     "~/.config/example"});
        rows(false, {"/Library/Application Support", "/Library/Fonts/Example.ttf", "/Library",
                     "/Library/CachesX/com.example"});
        rows(false, {"~/Library/Keychains/login.keychain-db",
                     "~/Library/keychains/login.keychain-db", "~/Library/Mail",
                     "~/Library/Messages/chat.db", "/Library/Application Support/Apple/x",
                     "/Library/Application Support/com.apple.TCC/TCC.db",
                     "/Library/Preferences/SystemConfiguration/preferences.plist"});
        rows(false,
             {"/System/Library/x", "/usr/local/bin/tool", "/private/etc/hosts",
              "@/Applications/Foo.app", "@/etc/passwd", "/private/var/folders/ab/xyz/C",
              "/private/var/folders/ab/xyz/X/com.example.app", "/private/var/folders/ab/xyz"});
        // Characters that hide or break lines (tab, line feed, delete, next line, line and
        // paragraph separators, zero width space, right-to-left override, nul) and lone
        // surrogates, inside a name or ending it.
        const QString cache = u"~/Library/Caches/com.example"_s;
        for (const QChar c :
             u"\t\n\x7f\x85\u2028\u2029\u200b\u202e"_s + QChar(0) + QChar(0xD800) + QChar(0xDC00)) {
            QTest::addRow("U+%04X inside", c.unicode()) << cache + c + u'x' << false;
            QTest::addRow("U+%04X at the end", c.unicode()) << cache + c << false;
        }
        QTest::newRow("pair outside the basic plane")
            << cache + QString::fromUcs4(U"\U0001F600") << true;
    }

    void isAllowed()
    {
        QFETCH(QString, path);
        QFETCH(bool, allowed);
        QCOMPARE(policy().isAllowed(resolved(path)), allowed);
        // As root the per-user folders would be root's own: the privileged helper never has them.
        const bool perUser = path.startsWith(u"/private/var/folders/"_s);
        QCOMPARE(policy().isAllowed(resolved(path), AdminPathPolicy::Scope::systemOnly),
                 allowed && !perUser);
    }

    void followsTheHomeFolderOfItsLayout()
    {
        const QString cache = resolved(u"~/Library/Caches/com.example"_s);
        QVERIFY(policy().isAllowed(cache));
        QVERIFY(!policy(u"other"_s).isAllowed(cache));
        QVERIFY(
            policy(u"other"_s).isAllowed(resolved(u"/Users/other/Library/Caches/com.example"_s)));
    }

    // The per-user folders lose one trailing slash; malformed ones are no roots at all.
    void darwinDirectories()
    {
        writeDarwinDirectories({u"/var/C//"_s, u"/var/T"_s});
        QCOMPARE(m_mac->layout().darwinUserDirectories(),
                 QStringList({resolved(u"/var/C/"_s), resolved(u"/var/T"_s)}));
        // "/" would otherwise become an empty root under which every path lies one level deep.
        writeDarwinDirectories({u"@/"_s, u"@relative/T/"_s});
        QVERIFY(!policy().isAllowed(u"/etc"_s));
        QVERIFY(!policy().isAllowed(resolved(u"/etc"_s)));
        writeDarwinDirectories({u"/var/../etc/"_s});
        QVERIFY(!policy().isAllowed(resolved(u"/var/../etc/x"_s)));
        QVERIFY(!policy().isAllowed(resolved(u"/etc/x"_s)));
    }

    // Only what the policy allows is ever sent: moves between an allowed place and directly
    // inside the Trash, boot-outs of allowed plists, forgets of valid identifiers. With nothing
    // to send, no prompt is shown.
    void onlyVettedCommandsAreSent_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("destination");
        QTest::addColumn<bool>("sent");
        const QString allowed = u"/Library/Application Support/Example"_s;
        QTest::newRow("allowed") << u"move"_s << allowed << u"Example"_s << true;
        QTest::newRow("back from the Trash") << u"move"_s << u"Example"_s << allowed << true;
        QTest::newRow("the user's cache folder itself")
            << u"move"_s << u"~/Library/Caches"_s << u"Caches"_s << false;
        QTest::newRow("newline in destination") << u"move"_s << allowed << u"Exa\nmple"_s << false;
        QTest::newRow("into a Trash subfolder") << u"move"_s << allowed << u"sub/x"_s << false;
        QTest::newRow("destination with ..") << u"move"_s << allowed << u"../x"_s << false;
        QTest::newRow("destination is the Trash") << u"move"_s << allowed << u""_s << false;
        QTest::newRow("outside the Trash") << u"move"_s << allowed << u"/Library/x"_s << false;
        QTest::newRow("relative destination") << u"move"_s << allowed << u"@rel/x"_s << false;
        QTest::newRow("daemon") << u"bootout"_s << u"/Library/LaunchDaemons/a"_s << QString()
                                << true;
        QTest::newRow("daemon elsewhere") << u"bootout"_s << u"/usr/lib/a"_s << QString() << false;
        // Identifiers of packages: Apple's in any case, empty, like an option, blanks, quotes,
        // separators, lines, invisible joiners, emoji and a lone surrogate are refused.
        const auto packages = [](bool sent, const QStringList &ids) {
            for (const QString &id : ids)
                QTest::addRow("package %s", id.toUtf8().constData())
                    << u"forget"_s << id << QString() << sent;
        };
        packages(true,
                 {u"com.example.pkg"_s, u"com.例え.パッケージ"_s,
                  QString::fromUcs4(U"com.\U00010400.pkg"), u"com.apple.pkgx"_s, u"\u0301abc"_s});
        packages(false, {u"com.apple.pkg.Safari"_s, u"COM.Apple.PKG.Safari"_s, QString(), u"-rf"_s,
                         u"com.example pkg"_s, u"com.example'pkg"_s, u"com.example;rm"_s,
                         u"com.example\npkg"_s, u"com.example\u200dpkg"_s,
                         QString::fromUcs4(U"com.\U0001F600"), u"com.example"_s + QChar(0xD800)});
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
        auto shell = std::make_shared<FakePrivilegedShell>();
        (void)AuthorizationService(m_mac->layout(), shell, FakePrivilegedShell::helper())
            .removeWithAdminPrivileges(moves, plists, packages);
        QCOMPARE(shell->batches().size(), sent ? 1 : 0);
        if (sent)
            QCOMPARE(HelperBatch::parseCommands(shell->batches().first()).value().first().word,
                     kind.toUtf8());
    }

    // Two moves, A then B, and every outcome of the prompt; a helper that others could have
    // changed is never run (no prompt shown). Of what a helper answers, only one result per
    // command, each about its own command's item, is believed.
    void promptOutcomes_data()
    {
        QTest::addColumn<QString>("shell"); // a behaviour, or the items a helper's answer names
        QTest::addColumn<QString>("error"); // a part of the error; "*": any error
        QTest::addColumn<int>("believed");
        QTest::newRow("ran") << u"run"_s << QString() << 2;
        QTest::newRow("cancelled")
            << u"cancel"_s << u"Administrator permission was canceled"_s << 0;
        const QString failed = u"Failed to remove files with admin privileges: "_s;
        QTest::newRow("failed") << u"fail"_s << failed + FakePrivilegedShell::failureMessage() << 0;
        QTest::newRow("helper writable by others") << u"untrusted"_s << u"Refused"_s << 0;
        QTest::newRow("answer: one per command") << u"AB"_s << QString() << 2;
        QTest::newRow("answer: too few") << u"A"_s << u"*"_s << 0;
        QTest::newRow("answer: too many") << u"ABB"_s << u"*"_s << 0;
        QTest::newRow("answer: each about the other item") << u"BA"_s << QString() << 0;
    }

    void promptOutcomes()
    {
        QFETCH(QString, shell);
        QFETCH(QString, error);
        QFETCH(int, believed);
        const QString a = m_mac->addTextFile(u"/Library/Caches/a"_s, "a");
        const QString b = m_mac->addTextFile(u"/Library/Caches/b"_s, "b");
        QDir().mkpath(resolved({}));
        QString helper = FakePrivilegedShell::helper();
        if (shell == u"untrusted") {
            helper = m_mac->path(u"/helper"_s);
            QVERIFY(QFile::copy(FakePrivilegedShell::helper(), helper));
            QVERIFY(QFile::setPermissions(helper,
                                          QFile::permissions(helper) | QFileDevice::WriteOther));
        }
        QList<HelperRecord> answer;
        for (const QChar item : shell.isUpper() ? shell : QString())
            answer.append(HelperRecord{"done", {QFile::encodeName(item == u'A' ? a : b)}});
        const auto fake = std::make_shared<FakePrivilegedShell>(
            shell == u"cancel" ? Behaviour::cancel
                               : (shell == u"fail" ? Behaviour::fail : Behaviour::runAsCaller));
        const auto report =
            AuthorizationService(
                m_mac->layout(),
                answer.isEmpty() ? std::shared_ptr<const PrivilegedShell>(fake)
                                 : std::make_shared<AnsweringShell>(HelperBatch::encode(answer)),
                helper)
                .removeWithAdminPrivileges({{a, resolved(u"a"_s)}, {b, resolved(u"b"_s)}}, {}, {});
        QVERIFY(report.error ? error == u"*" || report.error->message().contains(error)
                             : error.isEmpty());
        QCOMPARE(report.moves.size(), believed);
        if (!answer.isEmpty())
            return;
        QCOMPARE(fake->batches().size(), shell == u"untrusted" ? 0 : 1);
        QCOMPARE(QFileInfo::exists(a), believed == 0);
        QCOMPARE(report.moves.value(QFile::encodeName(a)).word,
                 believed ? "moved"_ba : QByteArray());
    }

    // The helper's own checks, whatever asked it, of one move of ROOT/Library/Caches/NAME into
    // the Trash. It runs nothing (exit 2) for a batch other than the one whose digest the user
    // approved (a file the user's programs rewrote while the prompt was up) or for a root folder
    // the user's programs could have laid out; else it answers "moved" (to "~/.Trash/...") or
    // "failed" (with the reason).
    void helperChecksWhatItIsAsked_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("answer"); // empty: the helper ran nothing
        QTest::newRow("name that is not UTF-8")
            << "w\xff"_ba << QString() << "The name is not valid UTF-8"_ba;
        QTest::newRow("home of another user")
            << "x"_ba << u"other user"_s << "The home folder does not belong to the user"_ba;
        QTest::newRow("hidden name taken") << ".x"_ba << QString() << "~/.Trash/.x 2"_ba;
        QTest::newRow("digest of another batch") << "x"_ba << u"other digest"_s << QByteArray();
        QTest::newRow("no digest") << "x"_ba << u"no digest"_s << QByteArray();
        QTest::newRow("root folder writable by all, even sticky")
            << "x"_ba << u"open root"_s << QByteArray();
    }

    void helperChecksWhatItIsAsked()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, fault);
        QFETCH(QByteArray, answer);
        const QString x = m_mac->addTextFile(u"/Library/Caches/x"_s, "x");
        m_mac->addTextFile(u"/Library/Caches/.x"_s, "x");
        m_mac->addTextFile(u"~/.Trash/.x"_s, "older");
        const QByteArray home = QFile::encodeName(m_mac->home());
        const QByteArray source = QFile::encodeName(m_mac->path(u"/Library/Caches/"_s)) + name;
        const QByteArray batch =
            HelperBatch::encode(HelperRecord{"move", {source, home + "/.Trash/" + name}});
        QStringList arguments{
            u"--root"_s, m_mac->root(),
            u"--home"_s, m_mac->home(),
            u"--user"_s, QString::number(fault == u"other user" ? 65534 : ::getuid())};
        if (fault != u"no digest")
            arguments << u"--batch-sha256"_s
                      << QString::fromLatin1(AuthorizationService::batchDigest(
                             fault == u"other digest" ? "other"_ba : batch));
        if (fault == u"open root") {
            if (::geteuid() != 0)
                QSKIP("the root folder is checked only when the helper runs as root");
            QCOMPARE(::chmod(QFile::encodeName(m_mac->root()).constData(), 01777), 0);
        }
        QProcess helper;
        helper.start(FakePrivilegedShell::helper(), arguments);
        helper.write(batch);
        helper.closeWriteChannel();
        QVERIFY(helper.waitForFinished());
        if (answer.isEmpty()) {
            QCOMPARE(helper.exitCode(), 2);
            QVERIFY(QFileInfo::exists(x));
            return;
        }
        const auto results = HelperBatch::parseResults(helper.readAllStandardOutput());
        QVERIFY(results && results->size() == 1);
        QCOMPARE(results->first().fields.value(1).replace(home, "~"), answer);
    }

    // The states of the three items of header(), "p"lanned, "m"oved or "r"estored; their bytes
    // survive as written.
    void states_data()
    {
        QTest::addColumn<QByteArray>("events");
        QTest::addColumn<QString>("states");
        const QByteArray moved0 = UninstallRecord::movedLine(0, "/T/a", false) + '\n';
        const QByteArray moved1 = UninstallRecord::movedLine(1, "/T/b\xff", true);
        QTest::newRow("planned only") << QByteArray() << u"ppp"_s;
        QTest::newRow("two moves") << moved0 + moved1 << u"mmp"_s;
        QTest::newRow("last line cut short") << moved0 + moved1.left(moved1.size() / 2) << u"mpp"_s;
        QTest::newRow("put back") << moved0 + UninstallRecord::restoredLine(0) << u"rpp"_s;
        QTest::newRow("put back before moved is ignored")
            << UninstallRecord::restoredLine(1) + '\n' + moved0 << u"mpp"_s;
        QTest::newRow("index out of range") << UninstallRecord::movedLine(3, "/T/x", false) + '\n' +
                                                   UninstallRecord::movedLine(-1, "/T/y", false)
                                            << u"ppp"_s;
    }
    void states()
    {
        QFETCH(QByteArray, events);
        QFETCH(QString, states);
        const auto record = UninstallRecord::parse(header() + '\n' + events);
        QVERIFY(record);
        QString actual;
        for (const auto &item : record->items)
            actual +=
                item.state == State::planned ? u'p' : (item.state == State::moved ? u'm' : u'r');
        QCOMPARE(actual, states);
        QCOMPARE(record->items.at(1).path, "/b\xff\xfe name"_ba);
        QCOMPARE(record->items.at(2).packageID, u"com.acme.pkg"_s);
        if (states == u"mmp") {
            QCOMPARE(record->items.at(1).trashPath, "/T/b\xff"_ba);
            QVERIFY(record->items.at(1).withAdminRights);
        }
    }

    void notARecord()
    {
        for (const QByteArray &journal :
             {""_ba, R"({"items": []})"_ba, R"({"quenzoUninstallRecord": 2, "items": []})"_ba})
            QVERIFY2(!UninstallRecord::parse(journal), journal.constData());
    }

    // Each case: the item, what happens to it before the restore, the outcome.
    void restoreOutcomes_data()
    {
        QTest::addColumn<bool>("admin");
        // "", "occupy", "empty trash", "link folder", "cancel", "user owned", or what the user's
        // programs forge
        QTest::addColumn<QString>("change");
        QTest::addColumn<Outcome>("outcome");
        for (const bool admin : {false, true}) {
            const char *rights = admin ? "admin" : "user";
            QTest::addRow("%s: back", rights) << admin << QString() << Outcome::restored;
            QTest::addRow("%s: original path taken", rights)
                << admin << u"occupy"_s << Outcome::occupied;
            QTest::addRow("%s: gone from the Trash", rights)
                << admin << u"empty trash"_s << Outcome::missing;
            QTest::addRow("%s: folder replaced by a link", rights)
                << admin << u"link folder"_s << Outcome::failed;
        }
        // The Trash is the user's: what is theirs there now may have been planted to be "put
        // back" into a system folder.
        QTest::newRow("admin: owned by the user in the Trash")
            << true << u"user owned"_s << Outcome::failed;
        // Root puts back only what it moved itself, to exactly where it came from.
        QTest::newRow("admin: never moved by the helper")
            << true << u"not journaled"_s << Outcome::failed;
        QTest::newRow("admin: Trash entry swapped for another root-owned file")
            << true << u"swap"_s << Outcome::failed;
        QTest::newRow("admin: record names another system folder")
            << true << u"forge"_s << Outcome::failed;
        QTest::newRow("admin: hard link to the Trash entry elsewhere")
            << true << u"hard link"_s << Outcome::failed;
        QTest::newRow("admin: prompt cancelled") << true << u"cancel"_s << Outcome::canceled;
    }
    void restoreOutcomes()
    {
        QFETCH(bool, admin);
        QFETCH(QString, change);
        QFETCH(Outcome, outcome);
        const QString macPath =
            admin ? u"/Library/Application Support/Acme/data"_s : u"~/Library/Caches/Acme/data"_s;
        UninstallRecord::Item item = moved(macPath, admin && change != u"not journaled"_s);
        item.withAdminRights = admin;
        QVERIFY(!item.path.isEmpty());
        const QString elsewhere = m_mac->addFolder(u"/elsewhere"_s);
        const QString trashPath = QFile::decodeName(item.trashPath);
        if (change == u"forge"_s)
            item.path = QFile::encodeName(m_mac->path(u"/Library/LaunchDaemons/data"_s));
        const QString original = QFile::decodeName(item.path);
        if (change == u"occupy"_s)
            m_mac->addTextFile(macPath, "new");
        else if (change == u"empty trash"_s)
            QVERIFY(QFile::remove(QFile::decodeName(item.trashPath)));
        else if (change == u"swap"_s)
            QVERIFY(QFile::rename(trashPath, elsewhere + u"/kept"_s) && // its inode stays taken
                    !m_mac->addTextFile(u"~/.Trash/data"_s, "x").isEmpty());
        else if (change == u"hard link"_s)
            QCOMPARE(::link(QFile::encodeName(trashPath).constData(),
                            QFile::encodeName(elsewhere + u"/hard"_s).constData()),
                     0);
        else if (change == u"link folder"_s) {
            // Its folder still resolves, but through a link higher up.
            const QString base = QFileInfo(original).path().section(u'/', 0, -2);
            QVERIFY(QDir(base).removeRecursively() && QDir(elsewhere).mkdir(u"Acme"_s) &&
                    QFile::link(elsewhere, base));
        } else if (change == u"user owned"_s) {
            QVERIFY(::chown(item.trashPath.constData(), 65534, 65534) == 0);
        }

        const QByteArray atOriginal = TreeFingerprint::of(original);
        const RestoreRun::Report report =
            restore({item}, change == u"cancel"_s ? Behaviour::cancel : Behaviour::runAsCaller);
        QVERIFY2(report.items.first().outcome == outcome, qPrintable(report.items.first().message));
        QCOMPARE(QFileInfo::exists(QFile::decodeName(item.trashPath)),
                 outcome != Outcome::restored && outcome != Outcome::missing);
        QVERIFY(!QFileInfo::exists(elsewhere + u"/Acme/data"_s)); // never through the link
        QCOMPARE(QFileInfo::exists(original),
                 outcome == Outcome::restored || outcome == Outcome::occupied);
        if (outcome != Outcome::restored) // what is there now stays
            QCOMPARE(TreeFingerprint::of(original), atOriginal);
    }

    void administratorItemsShareOnePrompt()
    {
        const RestoreRun::Report report = restore({moved(u"/Library/Application Support/A"_s, true),
                                                   moved(u"~/Library/Caches/B"_s, false),
                                                   moved(u"/Library/Preferences/C.plist"_s, true)});
        QCOMPARE(report.count(Outcome::restored), 3);
        QCOMPARE(m_shell->batches().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestAuthorizationService)
#include "tst_AuthorizationService.moc"
