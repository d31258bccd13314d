// SPDX-License-Identifier: MIT
#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <limits>

namespace {

QVariantMap sampleDictionary()
{
    return {
        {QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.example.App")},
        {QStringLiteral("Unicode"), QStringLiteral("Grüße 例え \U0001F600")},
        {QStringLiteral("Count"), QVariant::fromValue(qint64(42))},
        {QStringLiteral("Negative"), QVariant::fromValue(qint64(-5))},
        {QStringLiteral("Minimum"), QVariant::fromValue(std::numeric_limits<qint64>::min())},
        {QStringLiteral("Huge"), QVariant::fromValue(std::numeric_limits<quint64>::max())},
        {QStringLiteral("Ratio"), 0.25},
        {QStringLiteral("Enabled"), true},
        {QStringLiteral("Disabled"), false},
        {QStringLiteral("Data"), QByteArray("\x00\x01\xff", 3)},
        {QStringLiteral("Date"), QDateTime(QDate(2024, 2, 29), QTime(12, 30, 15), Qt::UTC)},
        {QStringLiteral("Old"), QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC)},
        {QStringLiteral("Arguments"), QVariantList{QStringLiteral("/usr/bin/tool"), QString()}},
        {QStringLiteral("Nested"),
         QVariantMap{{QStringLiteral("Empty"), QVariantMap()},
                     {QStringLiteral("List"), QVariantList{QVariantList{}, qint64(1)}}}},
    };
}

// A binary list of `count` objects where object i is an array holding object i + 1 (twice when
// `shared`, so the tree doubles at every level), or, with `cycle`, the last refers to the first.
QByteArray chainedBinaryList(quint32 count, bool shared = false, bool cycle = false)
{
    QByteArray objects;
    QList<quint32> offsets;
    for (quint32 i = 0; i < count; ++i) {
        offsets.append(quint32(8 + objects.size()));
        const bool last = i + 1 == count;
        if (last && !cycle) {
            objects.append(char(0xA0));
            continue;
        }
        const quint32 next = last ? 0 : i + 1;
        objects.append(char(shared ? 0xA2 : 0xA1));
        for (int r = 0; r < (shared ? 2 : 1); ++r)
            objects.append(char(next >> 24))
                .append(char(next >> 16))
                .append(char(next >> 8))
                .append(char(next));
    }
    QByteArray bytes = QByteArrayLiteral("bplist00") + objects;
    const quint64 table = quint64(bytes.size());
    for (const quint32 offset : offsets) {
        const quint32 big = qToBigEndian(offset);
        bytes.append(reinterpret_cast<const char *>(&big), 4);
    }
    bytes.append(QByteArray(6, '\0')).append(char(4)).append(char(4));
    for (const quint64 value : {quint64(count), quint64(0), table}) {
        const quint64 big = qToBigEndian(value);
        bytes.append(reinterpret_cast<const char *>(&big), 8);
    }
    return bytes;
}

QByteArray nestedXml(int depth)
{
    return QByteArrayLiteral("<?xml version=\"1.0\"?><plist version=\"1.0\">") +
           QByteArrayLiteral("<array>").repeated(depth) +
           QByteArrayLiteral("</array>").repeated(depth) + QByteArrayLiteral("</plist>");
}

} // namespace

class TestPropertyList : public QObject
{
    Q_OBJECT

private slots:
    void roundTrips_data();
    void roundTrips();
    void refusesBadInput_data();
    void refusesBadInput();
    void acceptsModerateNesting();
    void readsFiles_data();
    void readsFiles();
};

void TestPropertyList::roundTrips_data()
{
    QTest::addColumn<bool>("binary");
    QTest::newRow("xml") << false;
    QTest::newRow("binary") << true;
}

void TestPropertyList::roundTrips()
{
    QFETCH(bool, binary);
    const QVariantMap original = sampleDictionary();
    const QByteArray bytes =
        binary ? PropertyList::toBinary(original) : PropertyList::toXml(original);
    QVERIFY(!bytes.isEmpty());
    QCOMPARE(bytes.startsWith("bplist00"), binary);
    const auto parsed = PropertyList::parse(bytes);
    QVERIFY(parsed);
    QCOMPARE(parsed->typeId(), QMetaType::QVariantMap);
    const QVariantMap map = parsed->toMap();
    QCOMPARE(map.keys(), original.keys());
    for (auto it = original.cbegin(); it != original.cend(); ++it)
        QCOMPARE(map.value(it.key()), it.value());
    QCOMPARE(map.value(QStringLiteral("Count")).typeId(), QMetaType::LongLong);
    QCOMPARE(map.value(QStringLiteral("Negative")).typeId(), QMetaType::LongLong);
    QCOMPARE(map.value(QStringLiteral("Huge")).typeId(), QMetaType::ULongLong);
    QCOMPARE(map.value(QStringLiteral("Date")).toDateTime().timeSpec(), Qt::UTC);
}

void TestPropertyList::refusesBadInput_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArrayLiteral("CFBundleIdentifier = com.example;");
    QTest::newRow("deep xml") << nestedXml(100000);
    QTest::newRow("deep xml hidden by stray closes")
        << QByteArrayLiteral("<plist>") + QByteArrayLiteral("</array>").repeated(1000) +
               QByteArrayLiteral("<array>").repeated(100000) +
               QByteArrayLiteral("</array>").repeated(100000) + QByteArrayLiteral("</plist>");
    QTest::newRow("deep binary") << chainedBinaryList(100000);
    QTest::newRow("binary doubling at each level") << chainedBinaryList(64, true);
    QTest::newRow("binary cycle") << chainedBinaryList(3, false, true);
    QTest::newRow("binary self reference") << chainedBinaryList(1, false, true);
}

void TestPropertyList::refusesBadInput()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!PropertyList::parse(bytes));
}

void TestPropertyList::acceptsModerateNesting()
{
    QVERIFY(PropertyList::parse(nestedXml(100)));
    const auto chain = PropertyList::parse(chainedBinaryList(100));
    QVERIFY(chain);
    QCOMPARE(chain->typeId(), QMetaType::QVariantList);
    QVERIFY(PropertyList::parse(chainedBinaryList(10, true)));
}

void TestPropertyList::readsFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("size"); // the file is resized to it when not 0
    QTest::addColumn<bool>("read");
    QTest::addColumn<bool>("dictionary");
    const QByteArray xml = PropertyList::toXml(sampleDictionary());
    QTest::newRow("binary dictionary")
        << PropertyList::toBinary(sampleDictionary()) << qint64(0) << true << true;
    QTest::newRow("a list, not a dictionary")
        << PropertyList::toXml(QVariantList{qint64(1)}) << qint64(0) << true << false;
    // Only the size is wrong: the list itself is valid.
    QTest::newRow("oversized") << xml << qint64(PropertyList::kMaximumSize + 1) << false << false;
}

void TestPropertyList::readsFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, size);
    QFETCH(bool, read);
    QFETCH(bool, dictionary);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Info.plist"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    if (size)
        QVERIFY(file.resize(size));
    file.close();
    QCOMPARE(bool(PropertyList::read(path)), read);
    const auto map = PropertyList::readDictionary(path);
    QCOMPARE(bool(map), dictionary);
    if (map)
        QCOMPARE(map->value(QStringLiteral("CFBundleIdentifier")).toString(),
                 QStringLiteral("com.example.App"));
    QVERIFY(!PropertyList::read(dir.filePath(QStringLiteral("missing.plist"))));
    QVERIFY(!PropertyList::read(dir.path()));
    QVERIFY(!PropertyList::parse(QByteArray(PropertyList::kMaximumSize + 1, ' ')));
}

QTEST_GUILESS_MAIN(TestPropertyList)
#include "tst_PropertyList.moc"
