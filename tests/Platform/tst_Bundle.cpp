// SPDX-License-Identifier: MIT
#include "Platform/Bundle.h"
#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestBundle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsInfoDictionary_data();
    void readsInfoDictionary();
    void refusesNonFolders();
    void enclosingBundlePath_data();
    void enclosingBundlePath();

private:
    // A folder with Contents/Info.plist: `info` as XML when a map, as is when bytes, none when
    // invalid.
    QString makeBundle(const QVariant &info);

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestBundle::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

QString TestBundle::makeBundle(const QVariant &info)
{
    const QString path = m_dir->filePath(QStringLiteral("Example.app"));
    if (!QDir().mkpath(path + QStringLiteral("/Contents")) || !info.isValid())
        return path;
    QFile file(path + QStringLiteral("/Contents/Info.plist"));
    if (file.open(QIODevice::WriteOnly))
        file.write(info.typeId() == QMetaType::QByteArray ? info.toByteArray()
                                                          : PropertyList::toXml(info));
    return path;
}

void TestBundle::readsInfoDictionary_data()
{
    QTest::addColumn<QVariant>("info");
    QTest::addColumn<QString>("identifier"); // empty: none
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("executable");
    QTest::addColumn<int>("keys");
    const QString id = QStringLiteral("CFBundleIdentifier");
    const QString version = QStringLiteral("CFBundleShortVersionString");
    const QString executable = QStringLiteral("CFBundleExecutable");
    QTest::newRow("complete") << QVariant(QVariantMap{{id, QStringLiteral("com.example.App")},
                                                      {executable, QStringLiteral("Example")},
                                                      {version, QStringLiteral("2.1")}})
                              << QStringLiteral("com.example.App") << QStringLiteral("2.1")
                              << QStringLiteral("/Contents/MacOS/Example") << 3;
    QTest::newRow("identifier empty text")
        << QVariant(QVariantMap{{id, QString()}}) << QString() << QString() << QString() << 1;
    QTest::newRow("identifier a number")
        << QVariant(QVariantMap{{id, qint64(7)}}) << QString() << QString() << QString() << 1;
    QTest::newRow("identifier an array")
        << QVariant(QVariantMap{{id, QVariantList{QStringLiteral("com.example.App")}}}) << QString()
        << QString() << QString() << 1;
    QTest::newRow("version and executable not text")
        << QVariant(QVariantMap{
               {id, QStringLiteral("com.example.n")}, {version, 3.5}, {executable, qint64(1)}})
        << QStringLiteral("com.example.n") << QString() << QString() << 3;
    QTest::newRow("no Info.plist") << QVariant() << QString() << QString() << QString() << 0;
    QTest::newRow("garbage Info.plist")
        << QVariant(QByteArray("bplist00 not really")) << QString() << QString() << QString() << 0;
}

void TestBundle::readsInfoDictionary()
{
    QFETCH(QVariant, info);
    QFETCH(QString, identifier);
    QFETCH(QString, version);
    QFETCH(QString, executable);
    QFETCH(int, keys);
    const QString path = makeBundle(info);
    const auto bundle = Bundle::open(path);
    QVERIFY(bundle);
    QCOMPARE(bundle->path(), path);
    QCOMPARE(bundle->identifier().value_or(QString()), identifier);
    QCOMPARE(bundle->stringValue(QStringLiteral("CFBundleShortVersionString")).value_or(QString()),
             version);
    QCOMPARE(bundle->executablePath().value_or(path), path + executable);
    QCOMPARE(bundle->infoDictionary().size(), keys);
}

void TestBundle::refusesNonFolders()
{
    const QString filePath = m_dir->filePath(QStringLiteral("Plain.app"));
    QFile file(filePath);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(!Bundle::open(filePath));
    QVERIFY(!Bundle::open(m_dir->filePath(QStringLiteral("Missing.app"))));
    QVERIFY(!Bundle::open(QString()));
    QVERIFY(!Bundle::open(makeBundle({}))->stringValue(QStringLiteral("Missing")));
}

void TestBundle::enclosingBundlePath_data()
{
    QTest::addColumn<QString>("executable");
    QTest::addColumn<QString>("bundle");
    QTest::newRow("in a bundle") << QStringLiteral("/Applications/Quenzo.app/Contents/MacOS/Quenzo")
                                 << QStringLiteral("/Applications/Quenzo.app");
    QTest::newRow("plain folder") << QStringLiteral("/usr/bin/quenzo") << QString();
    QTest::newRow("not an app") << QStringLiteral("/Applications/Quenzo/Contents/MacOS/Quenzo")
                                << QString();
    QTest::newRow("no Contents") << QStringLiteral("/Applications/Quenzo.app/MacOS/Quenzo")
                                 << QString();
    QTest::newRow("helper inside Resources")
        << QStringLiteral("/Applications/Quenzo.app/Contents/Resources/helper") << QString();
}

void TestBundle::enclosingBundlePath()
{
    QFETCH(QString, executable);
    QFETCH(QString, bundle);
    const auto found = Bundle::enclosingBundlePath(executable);
    QCOMPARE(found.value_or(QString()), bundle);
}

QTEST_GUILESS_MAIN(TestBundle)
#include "tst_Bundle.moc"
