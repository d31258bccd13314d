// SPDX-License-Identifier: MIT
#include "Discovery/DiscoveryResults.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_DiscoveryResults : public QObject
{
    Q_OBJECT

private slots:
    // Paths below /h/Library/Application Support, offered in order, split at "|".
    void acceptsInOrder_data()
    {
        QTest::addColumn<QString>("offered");
        QTest::addColumn<QString>("kept");
        QTest::newRow("inside an earlier item") << u"Acme|Acme/Writer/a/b"_s << u"Acme"_s;
        QTest::newRow("reverse order keeps both") << u"Acme/Writer|Acme"_s << u"Acme/Writer|Acme"_s;
        QTest::newRow("same path, other spelling") << u"Acme|Acme/./"_s << u"Acme"_s;
        QTest::newRow("text prefix is not inside") << u"Acme|Acme Tools"_s << u"Acme|Acme Tools"_s;
    }
    void acceptsInOrder()
    {
        QFETCH(QString, offered);
        QFETCH(QString, kept);
        const QString folder = u"/h/Library/Application Support/"_s;
        DiscoveryResults results;
        for (const QString &path : offered.split(u'|')) {
            FileItem item;
            item.path = folder + path;
            results.add(item);
        }
        QStringList paths;
        for (const FileItem &item : results.items())
            paths.append(item.path.mid(folder.size()));
        QCOMPARE(paths, kept.split(u'|'));
    }
};

QTEST_GUILESS_MAIN(tst_DiscoveryResults)
#include "tst_DiscoveryResults.moc"
