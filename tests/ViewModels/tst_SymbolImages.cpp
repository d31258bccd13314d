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
};

QTEST_GUILESS_MAIN(SymbolImagesTest)
#include "tst_SymbolImages.moc"
