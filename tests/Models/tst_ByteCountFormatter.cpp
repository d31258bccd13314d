// SPDX-License-Identifier: MIT
#include "Models/ByteCountFormatter.h"

#include <QTest>

#include <limits>

class TestByteCountFormatter : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
};

void TestByteCountFormatter::formats_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, qint64 bytes, const char *expected) {
        QTest::newRow(name) << bytes << QString::fromUtf8(expected);
    };
    row("zero", 0, "Zero KB");
    row("one", 1, "1 byte");
    row("two", 2, "2 bytes");
    row("1000", 1000, "1 KB");
    row("1499 rounds down", 1499, "1 KB");
    row("2500 tie to even 2", 2500, "2 KB");
    row("2501", 2501, "3 KB");
    row("999499", 999499, "999 KB");
    row("999999 stays in KB", 999999, "1,000 KB");
    row("1e6", 1000000, "1 MB");
    row("1.25e6 tie to even", 1250000, "1.2 MB");
    row("1.250001e6", 1250001, "1.3 MB");
    row("999949999", 999949999, "999.9 MB");
    row("999950000 tie carries", 999950000, "1,000 MB");
    row("1e9", 1000000000, "1 GB");
    row("2.25e9", 2250000000, "2.25 GB");
    row("1.005e9 tie to even", 1005000000, "1 GB");
    row("1.01e9", 1010000000, "1.01 GB");
    row("1.1e9 drops the trailing zero", 1100000000, "1.1 GB");
    row("1e12", 1000000000000, "1 TB");
    row("123.456e12", 123456000000000, "123.46 TB");
    row("1e18", 1000000000000000000, "1 EB");
    row("max", std::numeric_limits<qint64>::max(), "9.22 EB");
    row("minus one", -1, "-1 byte");
    row("minus 1.5e6", -1500000, "-1.5 MB");
    row("min", std::numeric_limits<qint64>::min(), "-9.22 EB");
}

void TestByteCountFormatter::formats()
{
    QFETCH(qint64, bytes);
    QFETCH(QString, expected);
    QCOMPARE(formattedByteCount(bytes), expected);
}

QTEST_GUILESS_MAIN(TestByteCountFormatter)
#include "tst_ByteCountFormatter.moc"
