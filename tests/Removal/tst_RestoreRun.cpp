// SPDX-License-Identifier: MIT
// Putting items back from a record, with the user's rights and with one privileged run.
#include "Removal/AuthorizationService.h"
#include "Removal/RestoreRun.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "support/TemporaryFakeMac.h"

#include <QFile>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Outcome = RestoreRun::Outcome;

Q_DECLARE_METATYPE(RestoreRun::Outcome)

class TestRestoreRun : public QObject
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
            const AuthorizationService helper(std::make_shared<FakePrivilegedShell>(),
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
        item.state = UninstallRecord::State::moved;
        return item;
    }

    RestoreRun::Report
    restore(const QList<UninstallRecord::Item> &items,
            FakePrivilegedShell::Behaviour behaviour = FakePrivilegedShell::Behaviour::runAsCaller)
    {
        UninstallRecord record;
        record.items = items;
        m_shell = std::make_shared<FakePrivilegedShell>(behaviour);
        return RestoreRun({nullptr,
                           RestoreMover::adminRights(std::make_shared<AuthorizationService>(
                               m_shell, FakePrivilegedShell::helper())),
                           nullptr})
            .run(record);
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
    }
    void cleanup() { m_mac.reset(); } // before the next one is made, which it would unset

    // Each case: the item, what happens to it before the restore, the outcome.
    void outcomes_data()
    {
        QTest::addColumn<bool>("admin");
        // "", "occupy", "empty trash", "link folder", "user owned", or what the user's programs
        // forge
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
    }
    void outcomes()
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

        const RestoreRun::Report report = restore({item});
        QVERIFY2(report.items.first().outcome == outcome, qPrintable(report.items.first().message));
        QCOMPARE(QFileInfo::exists(QFile::decodeName(item.trashPath)),
                 outcome == Outcome::occupied || outcome == Outcome::failed);
        QVERIFY(!QFileInfo::exists(elsewhere + u"/Acme/data"_s)); // never through the link
        QCOMPARE(QFileInfo::exists(original),
                 outcome == Outcome::restored || outcome == Outcome::occupied);
        if (outcome == Outcome::occupied) {
            QFile now(original);
            QVERIFY(now.open(QIODevice::ReadOnly));
            QCOMPARE(now.readAll(), QByteArray("new"));
        }
    }

    void administratorItemsShareOnePrompt()
    {
        const RestoreRun::Report report = restore({moved(u"/Library/Application Support/A"_s, true),
                                                   moved(u"~/Library/Caches/B"_s, false),
                                                   moved(u"/Library/Preferences/C.plist"_s, true)});
        QCOMPARE(report.count(Outcome::restored), 3);
        QCOMPARE(m_shell->batches().size(), 1);
        QVERIFY(report.isComplete());
    }

    void cancelledPromptLeavesItemsInTheTrash()
    {
        const UninstallRecord::Item item = moved(u"/Library/Application Support/A"_s, true);
        const auto report = restore({item}, FakePrivilegedShell::Behaviour::cancel);
        QCOMPARE(report.items.first().outcome, Outcome::canceled);
        QVERIFY(QFileInfo::exists(QFile::decodeName(item.trashPath)));
        QVERIFY(!report.isComplete());
    }
};

QTEST_GUILESS_MAIN(TestRestoreRun)
#include "tst_RestoreRun.moc"
