// SPDX-License-Identifier: MIT
#include "ViewModels/SymbolImages.h"

#include <QFile>
#include <QtTest>

class SymbolImagesTest : public QObject
{
    Q_OBJECT

private slots:
    void everySymbolHasABundledIcon()
    {
        QStringList symbols = SymbolImages::allSymbols();
        for (const FileCategory category : allFileCategories())
            symbols.append(SymbolImages::categorySymbol(category));
        for (const QString &symbol : std::as_const(symbols)) {
            const QString file = SymbolImages::iconFile(symbol);
            QVERIFY2(!file.isEmpty(), qPrintable(symbol));
            QVERIFY2(QFile::exists(QStringLiteral(QUENZO_SOURCE_DIR "/src/Views/icons/") + file),
                     qPrintable(file));
        }
    }

    void categorySymbols_data()
    {
        QTest::addColumn<FileCategory>("category");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("application") << FileCategory::application << "app.fill";
        QTest::newRow("webData") << FileCategory::webData << "globe";
        QTest::newRow("launchAgents")
            << FileCategory::launchAgents << "arrow.clockwise.circle.fill";
        QTest::newRow("receipts") << FileCategory::receipts << "doc.plaintext.fill";
        QTest::newRow("other") << FileCategory::other << "doc.fill";
    }
    void categorySymbols()
    {
        QFETCH(FileCategory, category);
        QFETCH(QString, symbol);
        QCOMPARE(SymbolImages::categorySymbol(category), symbol);
    }
};

QTEST_GUILESS_MAIN(SymbolImagesTest)
#include "tst_SymbolImages.moc"
