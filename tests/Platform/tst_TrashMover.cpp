// SPDX-License-Identifier: MIT
#include "Platform/RenamingTrashMover.h"
#include "Platform/TrashNaming.h"
#include "fakemac/TreeFingerprint.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestTrashMover : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryFakeMac> m_mac;

private slots:
    // The Trash already holds Example.app and a dangling link; an app and a link wait to move.
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        m_mac->addTextFile(u"~/.Trash/Example.app/old"_s, "old");
        m_mac->addSymlink(u"~/.Trash/link"_s, u"/nonexistent"_s);
        m_mac->addTextFile(u"/Applications/Example.app/Contents/x"_s, "x");
        m_mac->addSymlink(u"~/Library/Caches/note"_s,
                          m_mac->addTextFile(u"/Users/Shared/target"_s, "target"));
    }
    void cleanup() { m_mac.reset(); }

    void freeNames_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QStringList>("reserved");
        QTest::addColumn<QString>("expected");
        QTest::newRow("free") << u"/a/Notes.app"_s << QStringList() << u"Notes.app"_s;
        QTest::newRow("taken on disk")
            << u"/a/Example.app"_s << QStringList() << u"Example 2.app"_s;
        QTest::newRow("taken and reserved")
            << u"/a/Example.app"_s << QStringList{u"Example 2.app"_s} << u"Example 3.app"_s;
        QTest::newRow("no extension") << u"/a/Data"_s << QStringList{u"Data"_s} << u"Data 2"_s;
        QTest::newRow("two extensions")
            << u"/a/x.tar.gz"_s << QStringList{u"x.tar.gz"_s} << u"x.tar 2.gz"_s;
        QTest::newRow("hidden name")
            << u"/a/.config"_s << QStringList{u".config"_s} << u".config 2"_s;
        QTest::newRow("dangling link takes the name")
            << u"/a/link"_s << QStringList() << u"link 2"_s;
    }
    void freeNames()
    {
        QFETCH(QString, item);
        QFETCH(QStringList, reserved);
        QFETCH(QString, expected);
        QSet<QString> promised;
        for (const QString &name : reserved)
            promised.insert(m_mac->trash(name));
        const QString result =
            TrashNaming::freeDestination(m_mac->home() + u"/.Trash"_s, item, promised);
        QCOMPARE(result, m_mac->trash(expected));
        QVERIFY(promised.contains(result));
    }

    // Moved whole under a free name, a link as the link, nothing in the Trash replaced.
    void moves_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<bool>("trashMissing");
        QTest::addColumn<QString>("landed"); // empty: not moved, and the error says why
        QTest::newRow("taken name")
            << u"/Applications/Example.app"_s << false << u"Example 2.app"_s;
        QTest::newRow("a link") << u"~/Library/Caches/note"_s << false << u"note"_s;
        QTest::newRow("no Trash yet") << u"/Applications/Example.app"_s << true << u"Example.app"_s;
        QTest::newRow("missing") << u"/Library/Caches/missing"_s << false << QString();
    }
    void moves()
    {
        QFETCH(QString, item);
        QFETCH(bool, trashMissing);
        QFETCH(QString, landed);
        if (trashMissing)
            QVERIFY(QDir(m_mac->home() + u"/.Trash"_s).removeRecursively());
        const QString path = m_mac->path(item);
        const QByteArray content = TreeFingerprint::of(path);
        QString error;
        QString trashPath;
        QCOMPARE(RenamingTrashMover().moveToTrash(path, &error, &trashPath), !landed.isEmpty());
        QCOMPARE(error.isEmpty(), !landed.isEmpty());
        if (landed.isEmpty())
            return;
        QCOMPARE(trashPath, m_mac->trash(landed));
        QCOMPARE(TreeFingerprint::of(trashPath), content);
        QVERIFY(!QFileInfo::exists(path) && !QFileInfo(path).isSymLink());
        QVERIFY(QFileInfo(m_mac->path(u"/Users/Shared/target"_s)).isFile());
        QVERIFY(trashMissing || QFileInfo::exists(m_mac->trash(u"Example.app/old"_s)));
    }
};

QTEST_GUILESS_MAIN(TestTrashMover)
#include "tst_TrashMover.moc"
