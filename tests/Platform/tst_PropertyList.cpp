// SPDX-License-Identifier: MIT
// What Quenzo adds to the parser: Qt values of the right types, and the limits that keep hostile
// lists (deep, cyclic, doubling, oversized) from reaching it.
#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

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
    const auto put = [](QByteArray &to, auto value) {
        const auto big = qToBigEndian(value);
        to.append(reinterpret_cast<const char *>(&big), sizeof big);
    };
    for (quint32 i = 0; i < count; ++i) {
        put(offsets, quint32(8 + objects.size()));
        if (i + 1 == count && !cycle) {
            objects.append(char(0xA0));
            continue;
        }
        objects.append(char(shared ? 0xA2 : 0xA1));
        for (int r = 0; r < (shared ? 2 : 1); ++r)
            put(objects, quint32(i + 1 == count ? 0 : i + 1));
    }
    QByteArray bytes = "bplist00"_ba + objects;
    const quint64 table = quint64(bytes.size());
    bytes.append(offsets).append(QByteArray(6, '\0')).append(char(4)).append(char(4));
    for (const quint64 value : {quint64(count), quint64(0), table})
        put(bytes, value);
    return bytes;
}

QByteArray nestedXml(int depth)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">"_ba + "<array>"_ba.repeated(depth) +
           "</array>"_ba.repeated(depth) + "</plist>"_ba;
}

} // namespace

class TestPropertyList : public QObject
{
    Q_OBJECT

private slots:
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
        QTest::newRow("text") << "CFBundleIdentifier = com.example;"_ba << false;
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

    void readsFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("read");
        QTest::addColumn<bool>("dictionary");
        QTest::newRow("binary dictionary") << PropertyList::toBinary(kSample) << true << true;
        QTest::newRow("a list, not a dictionary")
            << PropertyList::toXml(QVariantList{qint64(1)}) << true << false;
        // Only the size is wrong: the list itself is valid.
        QTest::newRow("oversized")
            << PropertyList::toXml(kSample).leftJustified(PropertyList::kMaximumSize + 1, ' ')
            << false << false;
    }
    void readsFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, read);
        QFETCH(bool, dictionary);
        QTemporaryDir dir;
        QFile file(dir.filePath(u"Info.plist"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        QCOMPARE(bool(PropertyList::read(file.fileName())), read);
        const auto map = PropertyList::readDictionary(file.fileName());
        QCOMPARE(map.value_or(QVariantMap()).value(u"Count"_s), dictionary ? 42 : QVariant());
    }
};

QTEST_GUILESS_MAIN(TestPropertyList)
#include "tst_PropertyList.moc"
