// SPDX-License-Identifier: MIT
// Reading back uninstall journals, also ones an interrupted run left.
#include "Removal/UninstallRecord.h"

#include <QTest>

using namespace Qt::StringLiterals;
using State = UninstallRecord::State;

Q_DECLARE_METATYPE(QList<State>)

class TestUninstallRecord : public QObject
{
    Q_OBJECT

    static QByteArray header()
    {
        QList<UninstallRecord::Item> items(3);
        items[0].path = "/a";
        items[1].path = "/b\xff\xfe name"; // not valid UTF-8
        items[2].path = "/c";
        items[2].packageID = u"com.acme.pkg"_s;
        return UninstallRecord::headerLine(QDateTime::currentDateTimeUtc(), items);
    }

private slots:
    void states_data()
    {
        QTest::addColumn<QByteArray>("events");
        QTest::addColumn<QList<State>>("states");
        const QByteArray moved0 = UninstallRecord::movedLine(0, "/T/a", false);
        const QByteArray moved1 = UninstallRecord::movedLine(1, "/T/b\xff", true);
        QTest::newRow("planned only")
            << QByteArray() << QList<State>{State::planned, State::planned, State::planned};
        QTest::newRow("two moves")
            << moved0 + '\n' + moved1 << QList<State>{State::moved, State::moved, State::planned};
        QTest::newRow("last line cut short")
            << moved0 + '\n' + moved1.left(moved1.size() / 2)
            << QList<State>{State::moved, State::planned, State::planned};
        QTest::newRow("put back") << moved0 + '\n' + UninstallRecord::restoredLine(0)
                                  << QList<State>{State::restored, State::planned, State::planned};
        QTest::newRow("put back before moved is ignored")
            << UninstallRecord::restoredLine(1) + '\n' + moved0
            << QList<State>{State::moved, State::planned, State::planned};
        QTest::newRow("index out of range")
            << UninstallRecord::movedLine(3, "/T/x", false) + '\n' +
                   UninstallRecord::movedLine(-1, "/T/y", false)
            << QList<State>{State::planned, State::planned, State::planned};
    }
    void states()
    {
        QFETCH(QByteArray, events);
        QFETCH(QList<State>, states);
        const auto record = UninstallRecord::parse(header() + '\n' + events);
        QVERIFY(record);
        QList<State> actual;
        for (const auto &item : record->items)
            actual.append(item.state);
        QCOMPARE(actual, states);
    }

    void bytesSurvive()
    {
        const auto record = UninstallRecord::parse(header() + '\n' +
                                                   UninstallRecord::movedLine(1, "/T/b\xff", true));
        QVERIFY(record);
        QCOMPARE(record->items.at(1).path, QByteArray("/b\xff\xfe name"));
        QCOMPARE(record->items.at(1).trashPath, QByteArray("/T/b\xff"));
        QVERIFY(record->items.at(1).withAdminRights);
        QCOMPARE(record->items.at(2).packageID, u"com.acme.pkg"_s);
    }

    void notARecord_data()
    {
        QTest::addColumn<QByteArray>("journal");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("other JSON") << QByteArray(R"({"items": []})");
        QTest::newRow("newer format") << QByteArray(R"({"quenzoUninstallRecord": 2, "items": []})");
    }
    void notARecord()
    {
        QFETCH(QByteArray, journal);
        QVERIFY(!UninstallRecord::parse(journal));
    }
};

QTEST_GUILESS_MAIN(TestUninstallRecord)
#include "tst_UninstallRecord.moc"
