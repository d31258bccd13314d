// SPDX-License-Identifier: MIT
#include "Platform/RenamingTrashMover.h"
#include "Platform/SystemLayout.h"
#include "Platform/TrashNaming.h"
#include "fakemac/TreeFingerprint.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestTrashMover : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;

    QString trash(const QString &name) const { return m_mac->trash(name); }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
    }

    void cleanup() { m_mac.reset(); }

    void freeNames_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QStringList>("taken");
        QTest::addColumn<QStringList>("reserved");
        QTest::addColumn<QString>("expected");
        QTest::newRow("free") << u"/a/Example.app"_s << QStringList() << QStringList()
                              << u"Example.app"_s;
        QTest::newRow("taken on disk") << u"/a/Example.app"_s << QStringList{u"Example.app"_s}
                                       << QStringList() << u"Example 2.app"_s;
        QTest::newRow("taken and reserved")
            << u"/a/Example.app"_s << QStringList{u"Example.app"_s}
            << QStringList{u"Example 2.app"_s} << u"Example 3.app"_s;
        QTest::newRow("no extension")
            << u"/a/Data"_s << QStringList{u"Data"_s, u"Data 2"_s} << QStringList() << u"Data 3"_s;
        QTest::newRow("two extensions")
            << u"/a/x.tar.gz"_s << QStringList{u"x.tar.gz"_s} << QStringList() << u"x.tar 2.gz"_s;
        QTest::newRow("hidden name")
            << u"/a/.config"_s << QStringList{u".config"_s} << QStringList() << u".config 2"_s;
        QTest::newRow("dangling link takes the name")
            << u"/a/link"_s << QStringList{u"link"_s} << QStringList() << u"link 2"_s;
    }

    void freeNames()
    {
        QFETCH(QString, item);
        QFETCH(QStringList, taken);
        QFETCH(QStringList, reserved);
        QFETCH(QString, expected);
        for (const QString &name : taken) {
            if (name == u"link"_s)
                m_mac->addSymlink(u"~/.Trash/link"_s, u"/nonexistent"_s);
            else
                m_mac->addFile(u"~/.Trash/"_s + name);
        }
        QSet<QString> promised;
        for (const QString &name : reserved)
            promised.insert(trash(name));
        const QString result =
            TrashNaming::freeDestination(m_mac->home() + u"/.Trash"_s, item, promised);
        QCOMPARE(result, trash(expected));
        QVERIFY(promised.contains(result));
    }

    void movesUnderAFreeNameWithoutReplacing()
    {
        const QString old = m_mac->addTextFile(u"~/.Trash/Example.app/old"_s, "old");
        m_mac->addTextFile(u"/Applications/Example.app/Contents/x"_s, "x");
        const QString app = m_mac->path(u"/Applications/Example.app"_s);
        const QByteArray content = TreeFingerprint::of(app);
        QString error;
        QVERIFY(RenamingTrashMover().moveToTrash(app, &error));
        QVERIFY(!QFileInfo::exists(app));
        QCOMPARE(TreeFingerprint::of(trash(u"Example 2.app"_s)), content);
        QVERIFY(QFileInfo::exists(old));
    }

    void movesALinkAsALink()
    {
        const QString target = m_mac->addTextFile(u"/Users/Shared/target"_s, "target");
        const QString link = m_mac->addSymlink(u"~/Library/Caches/link"_s, target);
        QString error;
        QVERIFY(RenamingTrashMover().moveToTrash(link, &error));
        QCOMPARE(QFileInfo(trash(u"link"_s)).symLinkTarget(), target);
        QVERIFY(QFileInfo(target).isFile());
    }

    void makesTheTrashWhenMissing()
    {
        QVERIFY(QDir(m_mac->home() + u"/.Trash"_s).removeRecursively());
        const QString file = m_mac->addTextFile(u"~/Library/Caches/x"_s, "x");
        QString error;
        QVERIFY(RenamingTrashMover().moveToTrash(file, &error));
        QVERIFY(QFileInfo::exists(trash(u"x"_s)));
    }

    void reportsWhatCouldNotMove()
    {
        QString error;
        QVERIFY(
            !RenamingTrashMover().moveToTrash(m_mac->path(u"/Library/Caches/missing"_s), &error));
        QVERIFY(!error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestTrashMover)
#include "tst_TrashMover.moc"
