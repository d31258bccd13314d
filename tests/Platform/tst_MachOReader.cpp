// SPDX-License-Identifier: MIT
#include "Platform/MachOReader.h"
#include "fakemac/MachOBuilder.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using Layout = MachOBuilder::Layout;

namespace {
std::optional<QByteArray> entitlementsOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return MachOReader::entitlementsData(buffer);
}

void putBig(QByteArray &bytes, qsizetype at, quint32 value)
{
    qToBigEndian(value, bytes.data() + at);
}

void putLittle(QByteArray &bytes, qsizetype at, quint32 value)
{
    qToLittleEndian(value, bytes.data() + at);
}

// Offsets inside a thin 64-bit executable from MachOBuilder.
constexpr qsizetype kCommandCount = 16;
constexpr qsizetype kCommandBytes = 20;
constexpr qsizetype kSignatureOffset = 32 + 8;
constexpr qsizetype kSignatureSize = 32 + 12;
constexpr qsizetype kSuperBlob = 4096;
} // namespace

class tst_MachOReader : public QObject
{
    Q_OBJECT

private slots:
    void readsGroups_data();
    void readsGroups();
    void unsignedHasNoGroups();
    void hostileHeaders_data();
    void hostileHeaders();
    void everyTruncationIsRefused();
};

void tst_MachOReader::readsGroups_data()
{
    QTest::addColumn<Layout>("layout");
    QTest::newRow("thin 64-bit") << Layout::thin64;
    QTest::newRow("thin 32-bit") << Layout::thin32;
    QTest::newRow("universal") << Layout::universal;
    QTest::newRow("universal 64") << Layout::universal64;
}

void tst_MachOReader::readsGroups()
{
    QFETCH(Layout, layout);
    const QStringList groups{QStringLiteral("ABCDE12345.com.acme.shared"),
                             QStringLiteral("group.com.acme.writer")};
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Writer"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(MachOBuilder::executable(groups, layout));
    file.close();
    QCOMPARE(MachOReader::applicationGroups(path), groups);
}

void tst_MachOReader::unsignedHasNoGroups()
{
    QVERIFY(!entitlementsOf(MachOBuilder::unsignedThin()));
    QVERIFY(MachOReader::applicationGroups(QStringLiteral("/nonexistent/Writer")).isEmpty());
    QTemporaryDir dir; // a folder where the executable should be
    QVERIFY(MachOReader::applicationGroups(dir.path()).isEmpty());
}

void tst_MachOReader::hostileHeaders_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = MachOBuilder::thin(MachOBuilder::entitlementsPlist({}));
    QVERIFY(entitlementsOf(good)); // the mutations below are what breaks it

    QByteArray b = good;
    putLittle(b, kCommandBytes, 0xffffffff);
    QTest::newRow("load commands larger than the file") << b;
    b = good;
    putLittle(b, kCommandCount, 0xffffffff);
    putLittle(b, 32 + 4, 0); // a zero-sized command would loop forever
    QTest::newRow("zero command size") << b;
    b = good;
    putLittle(b, kSignatureOffset, 0xfffffff0);
    QTest::newRow("signature offset past the end") << b;
    b = good;
    putLittle(b, kSignatureSize, 0xffffffff);
    QTest::newRow("signature size wraps") << b;
    b = good;
    putBig(b, kSuperBlob + 8, 0x10000000);
    QTest::newRow("blob count huge") << b;
    b = good;
    putBig(b, kSuperBlob + 12 + 8 + 4, 0xfffffffc);
    QTest::newRow("entitlements offset huge") << b;
    b = good;
    const qsizetype entitlements = kSuperBlob + 28 + 40;
    putBig(b, entitlements + 4, 0xffffffff);
    QTest::newRow("entitlements length huge") << b;
    b = good;
    putBig(b, entitlements + 4, 4);
    QTest::newRow("entitlements length below its header") << b;
    b = good;
    putBig(b, entitlements, 0xfade0c02);
    QTest::newRow("wrong entitlements magic") << b;
    b = good;
    putBig(b, kSuperBlob, 0x12345678);
    QTest::newRow("wrong superblob magic") << b;

    QByteArray fat = MachOBuilder::universal(MachOBuilder::entitlementsPlist({}));
    putBig(fat, 4, 0x7fffffff);
    QTest::newRow("universal with too many architectures") << fat;
    fat = MachOBuilder::universal(MachOBuilder::entitlementsPlist({}));
    putBig(fat, 8 + 20 + 8, 0xfffff000); // second slice offset
    QTest::newRow("universal slice past the end") << fat;
    fat = MachOBuilder::universal(MachOBuilder::entitlementsPlist({}));
    putBig(fat, 8 + 12, 0xffffffff);
    putBig(fat, 8 + 20 + 12, 0xffffffff);
    QTest::newRow("universal slices claim 4 GB") << fat;
    fat = MachOBuilder::universal(MachOBuilder::entitlementsPlist({}), true);
    putBig(fat, 8 + 32 + 8, 0xffffffff);
    putBig(fat, 8 + 32 + 12, 0xfffff000); // 64-bit offset near 2^64
    QTest::newRow("universal 64 offset wraps") << fat;
    QTest::newRow("java class file") << QByteArray::fromHex("cafebabe0000003400");
    QTest::newRow("empty") << QByteArray();
}

void tst_MachOReader::hostileHeaders()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!entitlementsOf(bytes));
}

void tst_MachOReader::everyTruncationIsRefused()
{
    for (const Layout layout : {Layout::thin64, Layout::universal}) {
        const QByteArray whole = MachOBuilder::executable({QStringLiteral("group.x.y")}, layout);
        QVERIFY(entitlementsOf(whole));
        // Cut anywhere, the file must give nothing and read nothing out of bounds (ASan).
        for (qsizetype size = 0; size < whole.size(); size += (size < 4200 ? 1 : 97))
            QVERIFY2(!entitlementsOf(whole.left(size)), qPrintable(QString::number(size)));
    }
}

QTEST_GUILESS_MAIN(tst_MachOReader)
#include "tst_MachOReader.moc"
