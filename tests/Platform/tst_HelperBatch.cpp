// SPDX-License-Identifier: MIT
// The records between Quenzo and its privileged helper: one spelling per batch, and nothing
// read from a batch that is not wholly well-formed.
#include "Platform/HelperBatch.h"

#include <QTest>

class TestHelperBatch : public QObject
{
    Q_OBJECT

private slots:
    void parses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("results"); // read as the helper's answer, else as its commands
        QTest::addColumn<int>("records");  // -1: refused
        QTest::newRow("nothing") << QByteArray() << false << 0;
        QTest::newRow("every command word")
            << QByteArray("bootout 3:a.b\nforget 1:x\nmove 1:a 1:b\n") << false << 3;
        QTest::newRow("every result word")
            << QByteArray("done 1:x\nmoved 1:a 1:b\nfailed 1:x 3:why\n") << true << 3;
        QTest::newRow("field holding a line break and a blank")
            << QByteArray("forget 3:a\n \n") << false << 1;
        QTest::newRow("unknown word") << QByteArray("remove 1:x\n") << false << -1;
        QTest::newRow("a result word as a command") << QByteArray("done 1:x\n") << false << -1;
        QTest::newRow("a command word as a result") << QByteArray("move 1:a 1:b\n") << true << -1;
        QTest::newRow("length with a leading zero") << QByteArray("forget 01:x\n") << false << -1;
        QTest::newRow("field missing") << QByteArray("move 1:a\n") << false << -1;
        QTest::newRow("no final line break") << QByteArray("forget 1:x") << false << -1;
        QTest::newRow("stray byte after a record") << QByteArray("forget 1:xy\n") << false << -1;
        QTest::newRow("length past the end") << QByteArray("forget 9:x\n") << false << -1;
        QTest::newRow("field over the limit")
            << QByteArray("forget 1048577:") + QByteArray(1048577, 'x') + '\n'
            << false << -1;
    }
    void parses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, results);
        QFETCH(int, records);
        const auto parsed =
            results ? HelperBatch::parseResults(bytes) : HelperBatch::parseCommands(bytes);
        QCOMPARE(parsed ? int(parsed->size()) : -1, records);
    }

    // Any bytes in any field come back as they went.
    void encodedRecordsReadBack()
    {
        const QList<HelperRecord> records{{"move", {QByteArray("/a b\n\xff", 6), QByteArray()}},
                                          {"forget", {QByteArray(300, ':')}},
                                          {"bootout", {QByteArray("x\0y", 3)}}};
        QVERIFY(HelperBatch::parseCommands(HelperBatch::encode(records)) == records);
    }
};

QTEST_GUILESS_MAIN(TestHelperBatch)
#include "tst_HelperBatch.moc"
