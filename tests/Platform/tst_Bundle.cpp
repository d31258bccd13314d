// SPDX-License-Identifier: MIT
// What Quenzo reads from the files an app brings, all of them untrusted: property lists, the
// bundle's Info.plist and place, its executable's entitlements and its icon.
#include "Platform/AppIcon.h"
#include "Platform/Bundle.h"
#include "Platform/MachOReader.h"
#include "Platform/PropertyList.h"
#include "fakemac/MachOBuilder.h"
#include "fakemac/PropertyListWriter.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <limits>

using namespace Qt::StringLiterals;
using Layout = MachOBuilder::Layout;

namespace {

template <typename T> QByteArray big(T value)
{
    const T stored = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&stored), sizeof stored);
}

QByteArray big32(quint32 value)
{
    return big(value);
}

const QVariantMap kSample{
    {u"CFBundleIdentifier"_s, u"Grüße 例え \U0001F600"_s},
    {u"Count"_s, QVariant::fromValue(qint64(42))},
    {u"Minimum"_s, QVariant::fromValue(std::numeric_limits<qint64>::min())},
    {u"Huge"_s, QVariant::fromValue(std::numeric_limits<quint64>::max())},
    {u"Ratio"_s, 0.25},
    {u"Flags"_s, QVariantList{true, false}},
    {u"Data"_s, QByteArray("\x00\x01\xff", 3)},
    {u"Date"_s, QDateTime(QDate(2024, 2, 29), QTime(12, 30, 15), Qt::UTC)},
    {u"Old"_s, QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC)},
    {u"Nested"_s, QVariantMap{{u"Empty"_s, QVariantMap()}, {u"List"_s, QVariantList{QString()}}}},
};

// A binary list of `count` objects where object i is an array holding object i + 1 (twice when
// `shared`, so the tree doubles at every level), or, with `cycle`, the last refers to the first.
QByteArray chainedBinaryList(quint32 count, bool shared = false, bool cycle = false)
{
    QByteArray objects;
    QByteArray offsets;
    for (quint32 i = 0; i < count; ++i) {
        offsets.append(big(quint32(8 + objects.size())));
        if (i + 1 == count && !cycle) {
            objects.append(char(0xA0));
            continue;
        }
        objects.append(char(shared ? 0xA2 : 0xA1));
        for (int r = 0; r < (shared ? 2 : 1); ++r)
            objects.append(big(quint32(i + 1 == count ? 0 : i + 1)));
    }
    QByteArray bytes = "bplist00"_ba + objects;
    const quint64 table = quint64(bytes.size());
    bytes.append(offsets).append(QByteArray(6, '\0')).append(char(4)).append(char(4));
    for (const quint64 value : {quint64(count), quint64(0), table})
        bytes.append(big(value));
    return bytes;
}

QByteArray nestedXml(int depth)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">"_ba + "<array>"_ba.repeated(depth) +
           "</array>"_ba.repeated(depth) + "</plist>"_ba;
}

// A PNG's signature and IHDR chunk, then `padding` bytes standing for the image data.
QByteArray png(quint32 width, quint32 height, int padding = 16)
{
    return "\x89PNG\r\n\x1a\n"_ba + big32(13) + "IHDR" + big32(width) + big32(height) +
           QByteArray(5 + padding, '\x01');
}

QByteArray entry(const char *type, const QByteArray &data)
{
    return QByteArray(type, 4) + big32(quint32(data.size() + 8)) + data;
}

QByteArray icns(const QList<QByteArray> &entries)
{
    const QByteArray body = entries.join();
    return "icns"_ba + big32(quint32(body.size() + 8)) + body;
}

const QStringList kGroups{u"ABCDE12345.com.acme.shared"_s, u"group.com.acme.writer"_s};

// A 32-bit value written over an executable at `at`, as the field there is stored.
struct Patch
{
    qsizetype at;
    quint32 value;
    bool littleEndian = false; // the thin executable's own header and load commands
};

QByteArray patched(QByteArray bytes, std::initializer_list<Patch> patches)
{
    for (const Patch &patch : patches) {
        if (patch.littleEndian)
            qToLittleEndian(patch.value, bytes.data() + patch.at);
        else
            qToBigEndian(patch.value, bytes.data() + patch.at);
    }
    return bytes;
}

// Offsets inside a thin 64-bit executable from MachOBuilder.
constexpr qsizetype kCommandCount = 16;
constexpr qsizetype kCommandBytes = 20;
constexpr qsizetype kSignatureOffset = 32 + 8;
constexpr qsizetype kSignatureSize = 32 + 12;
constexpr qsizetype kSuperBlob = 4096;
constexpr qsizetype kEntitlements = kSuperBlob + 28 + 40;

} // namespace

class TestBundle : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    // Example.app with these files below Contents (none of empty bytes).
    QString bundle(const QList<std::pair<QString, QByteArray>> &files)
    {
        const QString path = m_dir->filePath(u"Example.app"_s);
        QDir().mkpath(path + u"/Contents/Resources"_s);
        QDir().mkpath(path + u"/Contents/MacOS"_s);
        for (const auto &[name, bytes] : files) {
            QFile file(path + u"/Contents/"_s + name);
            if (!bytes.isEmpty() && (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0))
                qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return path;
    }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    // Beside its Info.plist the bundle holds Resources/AppIcon.icns, Resources/Icon.dat and an
    // icns outside Resources, which must not be reached through the icon's name.
    void readsInfoDictionary_data()
    {
        QTest::addColumn<QByteArray>("info"); // Contents/Info.plist; empty: none
        QTest::addColumn<QString>("read");    // identifier|version|executable path|icon
        const QString id = u"CFBundleIdentifier"_s;
        const QString version = u"CFBundleShortVersionString"_s;
        const QString executable = u"CFBundleExecutable"_s;
        const QString icon = u"CFBundleIconFile"_s;
        const QVariantMap complete{{id, u"com.example.App"_s},
                                   {executable, u"Example"_s},
                                   {version, u"2.1"_s},
                                   {icon, u"AppIcon"_s}};
        const QString completeRead = u"com.example.App|2.1|/Contents/MacOS/Example|icon"_s;
        QTest::newRow("complete") << PropertyList::toXml(complete) << completeRead;
        QTest::newRow("binary") << PropertyList::toBinary(complete) << completeRead;
        // Only the size is wrong: the list itself is valid.
        QTest::newRow("oversized")
            << PropertyList::toXml(complete).leftJustified(PropertyList::kMaximumSize + 1, ' ')
            << u"|||"_s;
        const auto row = [](const char *name, const QVariant &info, const QString &read) {
            QTest::newRow(name) << PropertyList::toXml(info) << read;
        };
        row("a list, not a dictionary", QVariantList{u"com.example.App"_s}, u"|||"_s);
        row("identifier empty text", QVariantMap{{id, QString()}}, u"|||"_s);
        row("identifier a number", QVariantMap{{id, qint64(7)}}, u"|||"_s);
        row("version and executable not text",
            QVariantMap{{id, u"com.example.n"_s}, {version, 3.5}, {executable, qint64(1)}},
            u"com.example.n|||"_s);
        row("icon named with extension", QVariantMap{{icon, u"AppIcon.icns"_s}}, u"|||icon"_s);
        row("icon of another extension", QVariantMap{{icon, u"Icon.dat"_s}}, u"|||icon"_s);
        row("icon missing", QVariantMap{{icon, u"Missing"_s}}, u"|||"_s);
        row("icon name not a text", QVariantMap{{icon, qint64(3)}}, u"|||"_s);
        row("icon outside Resources", QVariantMap{{icon, u"../Outside"_s}}, u"|||"_s);
        QTest::newRow("no Info.plist") << QByteArray() << u"|||"_s;
        QTest::newRow("garbage Info.plist") << "bplist00 not really"_ba << u"|||"_s;
    }
    void readsInfoDictionary()
    {
        QFETCH(QByteArray, info);
        QFETCH(QString, read);
        const QByteArray image = png(256, 256);
        const QByteArray file = icns({entry("ic08", image)});
        const QString path = bundle({{u"Info.plist"_s, info},
                                     {u"Resources/AppIcon.icns"_s, file},
                                     {u"Resources/Icon.dat"_s, file},
                                     {u"Outside.icns"_s, file}});
        const auto opened = Bundle::open(path);
        QVERIFY(opened);
        QCOMPARE(
            QStringList({opened->identifier().value_or(QString()),
                         opened->stringValue(u"CFBundleShortVersionString"_s).value_or(QString()),
                         opened->executablePath().value_or(path).mid(path.size()),
                         AppIcon::fromIcnsResource(path) == image ? u"icon"_s : QString()})
                .join(u'|'),
            read);
        // Only folders are bundles.
        QVERIFY(!Bundle::open(path + u"/Contents/Info.plist"_s) &&
                !Bundle::open(path + u"/Missing.app"_s) && !Bundle::open(QString()));
    }

    void enclosingBundlePath_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::addColumn<QString>("bundle");
        QTest::newRow("in a bundle")
            << u"/Applications/Quenzo.app/Contents/MacOS/Quenzo"_s << u"/Applications/Quenzo.app"_s;
        for (const char *path : {"/usr/bin/quenzo", "/Applications/Quenzo/Contents/MacOS/Quenzo",
                                 "/Applications/Quenzo.app/MacOS/Quenzo",
                                 "/Applications/Quenzo.app/Contents/Resources/helper"})
            QTest::newRow(path) << QString::fromLatin1(path) << QString();
    }
    void enclosingBundlePath()
    {
        QFETCH(QString, executable);
        QFETCH(QString, bundle);
        QCOMPARE(Bundle::enclosingBundlePath(executable).value_or(QString()), bundle);
    }

    void largestPng_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("picked"); // empty: none
        const QByteArray a512 = png(512, 512);
        const QByteArray b64 = png(64, 64, 400);
        const QByteArray c32 = png(32, 32);
        QTest::newRow("largest area, not the first nor the most bytes")
            << icns({entry("ic07", png(128, 128, 4000)), entry("it32", QByteArray(9000, 'x')),
                     entry("ic09", a512), entry("ic08", png(256, 256))})
            << a512;
        QTest::newRow("equal area: more bytes")
            << icns({entry("ic12", png(64, 64, 100)), entry("ic13", b64),
                     entry("icp6", png(64, 64, 200))})
            << b64;
        // The second entry claims 7 bytes, less than its own header.
        QTest::newRow("bad entry: the ones before it")
            << icns({entry("ic11", c32), "ic10"_ba + big32(7) + png(1024, 1024)}) << c32;
        const QByteArray valid = icns({entry("ic09", a512)});
        for (const auto &[name, bytes] :
             {std::pair{"short", "icns"_ba},
              {"wrong magic", "ICNS"_ba + valid.mid(4)},
              {"no png entries", icns({entry("it32", QByteArray(100, 'x'))})},
              {"truncated", valid.chopped(1)},
              {"total below header", "icns"_ba + big32(4) + valid.mid(8)},
              {"total past end", "icns"_ba + big32(0xFFFFFFFF) + valid.mid(8)},
              {"entry length zero", "icns"_ba + big32(16) + "ic09" + big32(0)},
              {"entry length past end",
               "icns"_ba + big32(24) + "ic09" + big32(0xFFFFFFF0) + png(1, 1).left(8)},
              {"signature without IHDR", icns({entry("ic09", png(1, 1).left(12))})}})
            QTest::newRow(name) << bytes << QByteArray();
    }
    void largestPng()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, picked);
        QCOMPARE(AppIcon::largestPngInIcns(bytes).value_or(QByteArray()), picked);
    }

    void roundTrips_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("xml") << PropertyList::toXml(kSample);
        QTest::newRow("binary") << PropertyList::toBinary(kSample);
    }
    void roundTrips()
    {
        QFETCH(QByteArray, bytes);
        const QVariantMap map = PropertyList::parse(bytes).value_or(QVariant()).toMap();
        QCOMPARE(map.keys(), kSample.keys());
        for (auto it = kSample.cbegin(); it != kSample.cend(); ++it) {
            QCOMPARE(map.value(it.key()), it.value());
            QCOMPARE(map.value(it.key()).typeId(), it.value().typeId());
        }
        QCOMPARE(map.value(u"Date"_s).toDateTime().timeSpec(), Qt::UTC);
    }

    void limits_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("parses");
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("over the size limit")
            << QByteArray(PropertyList::kMaximumSize + 1, ' ') << false;
        QTest::newRow("deep xml") << nestedXml(100000) << false;
        QTest::newRow("deep xml hidden by stray closes")
            << "<plist>"_ba + "</array>"_ba.repeated(1000) + nestedXml(100000) << false;
        QTest::newRow("deep binary") << chainedBinaryList(100000) << false;
        QTest::newRow("binary doubling at each level") << chainedBinaryList(64, true) << false;
        QTest::newRow("binary cycle") << chainedBinaryList(3, false, true) << false;
        QTest::newRow("binary self reference") << chainedBinaryList(1, false, true) << false;
        QTest::newRow("moderate xml") << nestedXml(100) << true;
        QTest::newRow("moderate binary") << chainedBinaryList(100) << true;
        QTest::newRow("moderate doubling") << chainedBinaryList(10, true) << true;
    }
    void limits()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, parses);
        QCOMPARE(bool(PropertyList::parse(bytes)), parses);
    }

    // Every layout read; every header that lies about sizes, offsets or magic read as none.
    void readsGroups_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("read");
        for (const auto &[name, layout] : {std::pair{"thin 64-bit", Layout::thin64},
                                           {"thin 32-bit", Layout::thin32},
                                           {"universal", Layout::universal},
                                           {"universal 64", Layout::universal64}})
            QTest::newRow(name) << MachOBuilder::executable(kGroups, layout) << true;
        const QByteArray plist = MachOBuilder::entitlementsPlist(kGroups);
        const QByteArray thin = MachOBuilder::thin(plist);
        const QByteArray fat = MachOBuilder::universal(plist);
        for (const auto &[name, bytes] :
             {std::pair{"unsigned", MachOBuilder::unsignedThin()},
              {"load commands larger than the file",
               patched(thin, {{kCommandBytes, 0xffffffff, true}})},
              // A zero-sized command would loop forever.
              {"zero command size",
               patched(thin, {{kCommandCount, 0xffffffff, true}, {32 + 4, 0, true}})},
              {"signature offset past the end",
               patched(thin, {{kSignatureOffset, 0xfffffff0, true}})},
              {"signature size wraps", patched(thin, {{kSignatureSize, 0xffffffff, true}})},
              {"blob count huge", patched(thin, {{kSuperBlob + 8, 0x10000000}})},
              {"entitlements offset huge", patched(thin, {{kSuperBlob + 24, 0xfffffffc}})},
              {"entitlements length huge", patched(thin, {{kEntitlements + 4, 0xffffffff}})},
              {"entitlements length below its header", patched(thin, {{kEntitlements + 4, 4}})},
              {"wrong entitlements magic", patched(thin, {{kEntitlements, 0xfade0c02}})},
              {"wrong superblob magic", patched(thin, {{kSuperBlob, 0x12345678}})},
              {"universal with too many architectures", patched(fat, {{4, 0x7fffffff}})},
              {"universal slice past the end", patched(fat, {{8 + 20 + 8, 0xfffff000}})},
              {"universal slices claim 4 GB",
               patched(fat, {{8 + 12, 0xffffffff}, {8 + 20 + 12, 0xffffffff}})},
              // A 64-bit offset near 2^64.
              {"universal 64 offset wraps",
               patched(MachOBuilder::universal(plist, true),
                       {{8 + 32 + 8, 0xffffffff}, {8 + 32 + 12, 0xfffff000}})},
              {"java class file", QByteArray::fromHex("cafebabe0000003400")}})
            QTest::newRow(name) << bytes << false;
    }
    void readsGroups()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, read);
        const QString executable =
            bundle({{u"MacOS/Writer"_s, bytes}}) + u"/Contents/MacOS/Writer"_s;
        QCOMPARE(MachOReader::applicationGroups(executable), read ? kGroups : QStringList());
    }

    void everyTruncationIsRefused()
    {
        for (const Layout layout : {Layout::thin64, Layout::universal}) {
            const QByteArray whole = MachOBuilder::executable({u"group.x.y"_s}, layout);
            // Cut anywhere, the file must give nothing and read nothing out of bounds (ASan).
            for (qsizetype size = 0; size <= whole.size(); size += (size < 4200 ? 1 : 97)) {
                QBuffer buffer;
                buffer.setData(whole.left(size));
                QVERIFY(buffer.open(QIODevice::ReadOnly));
                QVERIFY2(bool(MachOReader::entitlementsData(buffer)) == (size == whole.size()),
                         qPrintable(QString::number(size)));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestBundle)
#include "tst_Bundle.moc"
