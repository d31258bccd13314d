// SPDX-License-Identifier: MIT
#include "Models/ByteCountFormatter.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestByteCountFormatter : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
};

// Each row: "bytes: text" cases split at "; ".
void TestByteCountFormatter::formats_data()
{
    QTest::addColumn<QString>("cases");
    QTest::newRow("bytes") << u"0: Zero KB; 1: 1 byte; 2: 2 bytes; -1: -1 byte"_s;
    QTest::newRow("kilobytes whole") << u"1000: 1 KB; 1499: 1 KB; 999999: 1,000 KB"_s;
    QTest::newRow("megabytes, one digit")
        << u"1000000: 1 MB; 999949999: 999.9 MB; -1500000: -1.5 MB"_s;
    QTest::newRow("ties to even") << u"2500: 2 KB; 1250000: 1.2 MB; 1005000000: 1 GB"_s;
    QTest::newRow("past a tie") << u"2501: 3 KB; 1250001: 1.3 MB; 999950000: 1,000 MB"_s;
    QTest::newRow("two digits, no trailing zero")
        << u"1000000000: 1 GB; 2250000000: 2.25 GB; 1100000000: 1.1 GB"_s;
    QTest::newRow("larger units") << u"1000000000000: 1 TB; 123456000000000: 123.46 TB; "
                                     u"1000000000000000000: 1 EB"_s;
    QTest::newRow("limits") << u"9223372036854775807: 9.22 EB; -9223372036854775808: -9.22 EB"_s;
}

void TestByteCountFormatter::formats()
{
    QFETCH(QString, cases);
    for (const QString &each : cases.split(u"; "_s)) {
        const qint64 bytes = each.section(u':', 0, 0).toLongLong();
        QCOMPARE(u"%1: %2"_s.arg(bytes).arg(formattedByteCount(bytes)), each);
    }
}

QTEST_GUILESS_MAIN(TestByteCountFormatter)
#include "tst_ByteCountFormatter.moc"
