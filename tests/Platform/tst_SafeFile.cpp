// SPDX-License-Identifier: MIT
// Files others may have planted. Every reader, given a FIFO, a link to a FIFO, a device or a
// folder where a file belongs, gives nothing at once (a reader that opened the FIFO would wait
// for a writer forever and hang this test, which is how a blocking read shows here). What moves
// to the Trash moves as itself, under a name nothing holds.
#include "Platform/AppIcon.h"
#include "Platform/Bundle.h"
#include "Platform/MachOReader.h"
#include "Platform/PropertyList.h"
#include "Platform/RenamingTrashMover.h"
#include "Platform/SafeFile.h"
#include "Platform/TrashNaming.h"
#include "fakemac/TreeFingerprint.h"
#include "support/CliRun.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(SafeFile::Links)

class TestSafeFile : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryFakeMac> m_mac;

    // Replaces whatever is at `macPath` with a thing of `kind`; gives its real path.
    QString plant(const QString &macPath, const QString &kind)
    {
        const QString real = m_mac->path(macPath);
        QFile::remove(real);
        QDir().mkpath(real.section(u'/', 0, -2));
        const QByteArray bytes = QFile::encodeName(real);
        const bool planted = kind == u"fifo" ? ::mkfifo(bytes.constData(), 0644) == 0
                             : kind == u"link to fifo"
                                 ? ::mkfifo((bytes + ".fifo").constData(), 0644) == 0 &&
                                       QFile::link(real + u".fifo"_s, real)
                             : kind == u"device" ? QFile::link(u"/dev/zero"_s, real)
                                                 : QDir().mkpath(real);
        if (!planted)
            qFatal("cannot plant %s", qPrintable(real));
        return real;
    }

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

    // Each reader alone, then the whole scan of the command line with all of them planted (a
    // launch agent, the dropped app's executable and icon, another installed app's Info.plist):
    // it ends, and finds the app's own files.
    void readersRefuseWhatIsNotAFile_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"fifo", "link to fifo", "device", "folder"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }
    void readersRefuseWhatIsNotAFile()
    {
        QFETCH(QString, kind);
        FakeMac::App app;
        app.path = u"/Applications/Other.app"_s;
        app.identifier = u"com.acme.other"_s;
        m_mac->addApp(app);
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.acme.writer"_s;
        app.executable = u"Writer"_s;
        app.icon = true;
        const QString writer = m_mac->addApp(app);
        m_mac->addFolder(u"~/Library/Caches/com.acme.writer"_s);
        QVERIFY(
            !PropertyList::read(plant(u"~/Library/LaunchAgents/com.acme.writer.plist"_s, kind)));
        QVERIFY(!MachOReader::entitlements(plant(app.path + u"/Contents/MacOS/Writer"_s, kind)));
        plant(app.path + u"/Contents/Resources/AppIcon.icns"_s, kind);
        QVERIFY(!AppIcon::fromIcnsResource(writer));
        const QString info = plant(u"/Applications/Other.app/Contents/Info.plist"_s, kind);
        QVERIFY(!SafeFile::read(info, 1024, SafeFile::Links::follow));
        const auto opened = Bundle::open(m_mac->path(u"/Applications/Other.app"_s));
        QVERIFY(!opened || !opened->identifier());

        const CliRun run = CliRun::on(u"scan"_s, m_mac->root(), m_mac->home(), {}, writer);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(u"~/Library/Caches/com.acme.writer"_s),
                 qPrintable(run.out + run.err));
    }

    void readsOnlyWhatItMay_data()
    {
        QTest::addColumn<bool>("throughLink");
        QTest::addColumn<SafeFile::Links>("links");
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("read"); // with a limit of 10 bytes
        using L = SafeFile::Links;
        QTest::newRow("file at the limit") << false << L::refuse << 10 << true;
        QTest::newRow("file past the limit") << false << L::follow << 11 << false;
        QTest::newRow("link followed") << true << L::follow << 10 << true;
        QTest::newRow("link refused") << true << L::refuse << 10 << false;
    }
    void readsOnlyWhatItMay()
    {
        QFETCH(bool, throughLink);
        QFETCH(SafeFile::Links, links);
        QFETCH(int, size);
        QFETCH(bool, read);
        const QString file = m_mac->addTextFile(u"/data/file"_s, QByteArray(size, 'x'));
        const QString link = m_mac->addSymlink(u"/data/link"_s, file);
        const auto bytes = SafeFile::read(throughLink ? link : file, 10, links);
        QCOMPARE(bytes.value_or("-"), read ? QByteArray(size, 'x') : "-"_ba);
    }

    void freeNames_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("reserved"); // promised to another item of the run
        QTest::addColumn<QString>("expected");
        for (const auto &[name, item, reserved, expected] :
             {std::tuple{"free", "Notes.app", "", "Notes.app"},
              {"taken on disk", "Example.app", "", "Example 2.app"},
              {"taken and reserved", "Example.app", "Example 2.app", "Example 3.app"},
              {"no extension", "Data", "Data", "Data 2"},
              {"two extensions", "x.tar.gz", "x.tar.gz", "x.tar 2.gz"},
              {"hidden name", ".config", ".config", ".config 2"},
              {"dangling link takes the name", "link", "", "link 2"}})
            QTest::newRow(name) << QString::fromUtf8(item) << QString::fromUtf8(reserved)
                                << QString::fromUtf8(expected);
    }
    void freeNames()
    {
        QFETCH(QString, item);
        QFETCH(QString, reserved);
        QFETCH(QString, expected);
        QSet<QString> promised{m_mac->trash(reserved.isEmpty() ? u"none"_s : reserved)};
        const QString result =
            TrashNaming::freeDestination(m_mac->home() + u"/.Trash"_s, u"/a/"_s + item, promised);
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
        const Result<QString> trashPath = RenamingTrashMover(m_mac->layout()).moveToTrash(path);
        QCOMPARE(trashPath.hasValue(), !landed.isEmpty());
        QCOMPARE(trashPath.error().isEmpty(), !landed.isEmpty());
        if (landed.isEmpty())
            return;
        QCOMPARE(*trashPath, m_mac->trash(landed));
        QCOMPARE(TreeFingerprint::of(*trashPath), content);
        QVERIFY(!QFileInfo::exists(path) && !QFileInfo(path).isSymLink());
        QVERIFY(QFileInfo(m_mac->path(u"/Users/Shared/target"_s)).isFile());
        QVERIFY(trashMissing || QFileInfo::exists(m_mac->trash(u"Example.app/old"_s)));
    }
};

QTEST_GUILESS_MAIN(TestSafeFile)
#include "tst_SafeFile.moc"
