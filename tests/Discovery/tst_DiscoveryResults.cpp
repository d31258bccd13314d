// SPDX-License-Identifier: MIT
#include "Discovery/DiscoveryResults.h"

#include <QTest>

class tst_DiscoveryResults : public QObject
{
    Q_OBJECT

private slots:
    void acceptsInOrder_data();
    void acceptsInOrder();
};

void tst_DiscoveryResults::acceptsInOrder_data()
{
    QTest::addColumn<QStringList>("offered");
    QTest::addColumn<QStringList>("kept");
    const QString acme = QStringLiteral("/h/Library/Application Support/Acme");
    const QString writer = acme + QStringLiteral("/Writer");
    QTest::newRow("inside an earlier item") << QStringList{acme, writer} << QStringList{acme};
    QTest::newRow("reverse order keeps both")
        << QStringList{writer, acme} << QStringList{writer, acme};
    QTest::newRow("same path twice") << QStringList{acme, acme} << QStringList{acme};
    QTest::newRow("same path, other spelling")
        << QStringList{acme, acme + QStringLiteral("/./")} << QStringList{acme};
    QTest::newRow("common text prefix is not inside")
        << QStringList{acme, acme + QStringLiteral(" Tools")}
        << QStringList{acme, acme + QStringLiteral(" Tools")};
    QTest::newRow("deep inside") << QStringList{acme, writer + QStringLiteral("/a/b/c")}
                                 << QStringList{acme};
}

void tst_DiscoveryResults::acceptsInOrder()
{
    QFETCH(QStringList, offered);
    QFETCH(QStringList, kept);
    DiscoveryResults results;
    for (const QString &path : offered) {
        FileItem item;
        item.path = path;
        results.add(item);
    }
    QStringList paths;
    for (const FileItem &item : results.items())
        paths.append(item.path);
    QCOMPARE(paths, kept);
}

QTEST_GUILESS_MAIN(tst_DiscoveryResults)
#include "tst_DiscoveryResults.moc"
