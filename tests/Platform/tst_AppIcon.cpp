// SPDX-License-Identifier: MIT
#include "Platform/AppIcon.h"
#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

QByteArray bigEndian32(quint32 value)
{
    const quint32 big = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&big), 4);
}

// A PNG's signature and IHDR chunk, then `padding` bytes standing for the image data.
QByteArray png(quint32 width, quint32 height, int padding = 16)
{
    return QByteArrayLiteral("\x89PNG\r\n\x1a\n") + bigEndian32(13) + QByteArrayLiteral("IHDR") +
           bigEndian32(width) + bigEndian32(height) + QByteArray(5 + padding, '\x01');
}

QByteArray entry(const char *type, const QByteArray &data)
{
    return QByteArray(type, 4) + bigEndian32(quint32(data.size() + 8)) + data;
}

QByteArray icns(const QList<QByteArray> &entries)
{
    QByteArray body;
    for (const QByteArray &e : entries)
        body += e;
    return QByteArrayLiteral("icns") + bigEndian32(quint32(body.size() + 8)) + body;
}

} // namespace

class TestAppIcon : public QObject
{
    Q_OBJECT

private slots:
    void picksTheLargestPng_data();
    void picksTheLargestPng();
    void refusesMalformedIcns_data();
    void refusesMalformedIcns();
    void stopsAtBadEntryKeepingEarlierOnes();
    void extractsFromBundle_data();
    void extractsFromBundle();
};

void TestAppIcon::picksTheLargestPng_data()
{
    QTest::addColumn<QList<QByteArray>>("entries");
    QTest::addColumn<int>("picked"); // the entry's index
    QTest::newRow("largest area, not the first nor the most bytes")
        << QList{entry("ic07", png(128, 128, 4000)), entry("it32", QByteArray(9000, 'x')),
                 entry("ic09", png(512, 512)), entry("ic08", png(256, 256))}
        << 2;
    QTest::newRow("equal area: more bytes")
        << QList{entry("ic12", png(64, 64, 100)), entry("ic13", png(64, 64, 400)),
                 entry("icp6", png(64, 64, 200))}
        << 1;
}

void TestAppIcon::picksTheLargestPng()
{
    QFETCH(QList<QByteArray>, entries);
    QFETCH(int, picked);
    QCOMPARE(AppIcon::largestPngInIcns(icns(entries)),
             std::optional<QByteArray>(entries.at(picked).mid(8)));
}

void TestAppIcon::refusesMalformedIcns_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray valid = icns({entry("ic09", png(512, 512))});
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("short") << QByteArrayLiteral("icns");
    QTest::newRow("wrong magic") << QByteArrayLiteral("ICNS") + valid.mid(4);
    QTest::newRow("no png entries") << icns({entry("it32", QByteArray(100, 'x'))});
    QTest::newRow("header only") << icns({});
    QTest::newRow("truncated") << valid.left(valid.size() - 1);
    QTest::newRow("total below header")
        << QByteArrayLiteral("icns") + bigEndian32(4) + valid.mid(8);
    QTest::newRow("total past end")
        << QByteArrayLiteral("icns") + bigEndian32(0xFFFFFFFF) + valid.mid(8);
    QTest::newRow("entry length zero")
        << QByteArrayLiteral("icns") + bigEndian32(16) + QByteArrayLiteral("ic09") + bigEndian32(0);
    QTest::newRow("entry length past end") << QByteArrayLiteral("icns") + bigEndian32(24) +
                                                  QByteArrayLiteral("ic09") +
                                                  bigEndian32(0xFFFFFFF0) + png(1, 1).left(8);
    QTest::newRow("signature without IHDR") << icns({entry("ic09", png(1, 1).left(12))});
}

void TestAppIcon::refusesMalformedIcns()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!AppIcon::largestPngInIcns(bytes));
}

void TestAppIcon::stopsAtBadEntryKeepingEarlierOnes()
{
    const QByteArray first = png(32, 32);
    QByteArray data = icns({entry("ic11", first), entry("ic10", png(1024, 1024))});
    // The second entry claims 7 bytes, less than its own header.
    const qsizetype second = 8 + 8 + first.size();
    data.replace(second + 4, 4, bigEndian32(7));
    QCOMPARE(AppIcon::largestPngInIcns(data), std::optional<QByteArray>(first));
}

void TestAppIcon::extractsFromBundle_data()
{
    QTest::addColumn<QVariant>("iconFile"); // CFBundleIconFile; invalid leaves it out
    QTest::addColumn<bool>("found");
    QTest::newRow("name without extension") << QVariant(QStringLiteral("AppIcon")) << true;
    QTest::newRow("name with extension") << QVariant(QStringLiteral("AppIcon.icns")) << true;
    QTest::newRow("other extension kept") << QVariant(QStringLiteral("Icon.dat")) << true;
    QTest::newRow("file missing") << QVariant(QStringLiteral("Missing")) << false;
    QTest::newRow("no icon key") << QVariant() << false;
    QTest::newRow("not a text") << QVariant(qint64(3)) << false;
    // An icns outside Resources must not be reached through the name.
    QTest::newRow("outside Resources") << QVariant(QStringLiteral("../Outside")) << false;
}

void TestAppIcon::extractsFromBundle()
{
    QFETCH(QVariant, iconFile);
    QFETCH(bool, found);
    QTemporaryDir dir;
    const QString bundle = dir.filePath(QStringLiteral("Example.app"));
    QVERIFY(QDir().mkpath(bundle + QStringLiteral("/Contents/Resources")));
    const QByteArray image = png(256, 256);
    const auto write = [&bundle](const QString &name, const QByteArray &bytes) {
        QFile file(bundle + QStringLiteral("/Contents/") + name);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    QVariantMap info;
    if (iconFile.isValid())
        info.insert(QStringLiteral("CFBundleIconFile"), iconFile);
    QVERIFY(write(QStringLiteral("Info.plist"), PropertyList::toXml(info)));
    for (const char *name : {"Resources/AppIcon.icns", "Resources/Icon.dat", "Outside.icns"})
        QVERIFY(write(QString::fromLatin1(name), icns({entry("ic08", image)})));
    QCOMPARE(AppIcon::fromIcnsResource(bundle),
             found ? std::optional<QByteArray>(image) : std::nullopt);
    QVERIFY(!AppIcon::fromIcnsResource(dir.filePath(QStringLiteral("Missing.app"))));
}

QTEST_GUILESS_MAIN(TestAppIcon)
#include "tst_AppIcon.moc"
