// SPDX-License-Identifier: MIT
// Every reader of files others may have planted, given a FIFO, a link to a FIFO, a device or a
// folder where a file belongs: each gives nothing, at once. A reader that opened the FIFO would
// wait for a writer forever and hang this test, which is how a blocking read shows here.
#include "Platform/AppIcon.h"
#include "Platform/Bundle.h"
#include "Platform/MachOReader.h"
#include "Platform/PropertyList.h"
#include "Platform/SafeFile.h"
#include "support/CliRun.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(SafeFile::Links)

class TestSafeFile : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;

    // Replaces whatever is at `macPath` with a thing of `kind`.
    void plant(const QString &macPath, const QString &kind)
    {
        const QString real = m_mac->path(macPath);
        QFile::remove(real);
        QDir().mkpath(real.section(u'/', 0, -2));
        const QByteArray bytes = QFile::encodeName(real);
        if (kind == u"fifo")
            QVERIFY(::mkfifo(bytes.constData(), 0644) == 0);
        else if (kind == u"link to fifo")
            QVERIFY(::mkfifo((bytes + ".fifo").constData(), 0644) == 0 &&
                    QFile::link(real + u".fifo"_s, real));
        else if (kind == u"device")
            QVERIFY(QFile::link(u"/dev/zero"_s, real));
        else
            QVERIFY(QDir().mkpath(real));
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
    }

    void cleanup() { m_mac.reset(); }

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
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.acme.writer"_s;
        app.executable = u"Writer"_s;
        app.icon = true;
        const QString bundle = m_mac->addApp(app);
        plant(u"/Applications/Writer.app/Contents/MacOS/Writer"_s, kind);
        plant(u"/Applications/Writer.app/Contents/Resources/AppIcon.icns"_s, kind);
        plant(u"/Library/LaunchAgents/com.acme.writer.plist"_s, kind);
        QVERIFY(!PropertyList::read(m_mac->path(u"/Library/LaunchAgents/com.acme.writer.plist"_s)));
        QVERIFY(!MachOReader::entitlements(
            m_mac->path(u"/Applications/Writer.app/Contents/MacOS/Writer"_s)));
        QVERIFY(!AppIcon::fromIcnsResource(bundle));
        plant(u"/Applications/Writer.app/Contents/Info.plist"_s, kind);
        const auto opened = Bundle::open(bundle);
        QVERIFY(!opened || !opened->identifier());
        QVERIFY(!SafeFile::read(m_mac->path(u"/Applications/Writer.app/Contents/Info.plist"_s),
                                1024, SafeFile::Links::follow));
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
        const QString link = m_mac->path(u"/data/link"_s);
        QVERIFY(QFile::link(file, link));
        const auto bytes = SafeFile::read(throughLink ? link : file, 10, links);
        QCOMPARE(bytes.has_value(), read);
        if (read)
            QCOMPARE(bytes->size(), size);
    }

    // The whole scan of the command line, with FIFOs where a launch agent, an installed app's
    // Info.plist and the dropped app's icon belong: it ends, and finds the app's own files.
    void scanEndsWithFifosPlanted()
    {
        FakeMac::App app;
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.acme.writer"_s;
        app.executable = u"Writer"_s;
        app.icon = true;
        m_mac->addApp(app);
        FakeMac::App other = app;
        other.path = u"/Applications/Other.app"_s;
        other.identifier = u"com.acme.other"_s;
        m_mac->addApp(other);
        m_mac->addFolder(u"~/Library/Caches/com.acme.writer"_s);
        plant(u"~/Library/LaunchAgents/com.acme.writer.agent.plist"_s, u"fifo"_s);
        plant(u"/Applications/Other.app/Contents/Info.plist"_s, u"fifo"_s);
        plant(u"/Applications/Writer.app/Contents/Resources/AppIcon.icns"_s, u"fifo"_s);
        const CliRun run =
            CliRun::on(u"scan"_s, m_mac->root(), m_mac->home(), {}, m_mac->path(app.path));
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(u"com.acme.writer"_s), qPrintable(run.out + run.err));
    }
};

QTEST_GUILESS_MAIN(TestSafeFile)
#include "tst_SafeFile.moc"
