// SPDX-License-Identifier: MIT
#include "Platform/Bundle.h"
#include "Platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestBundle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsInfoDictionary();
    void identifierMustBeNonEmptyText_data();
    void identifierMustBeNonEmptyText();
    void versionMustBeText();
    void folderWithoutInfoIsABundleWithoutIdentifier();
    void unreadableInfoIsEmpty();
    void refusesNonFolders();
    void enclosingBundlePath_data();
    void enclosingBundlePath();
    void testProgramHasNoBundleIdentifier();

private:
    QString makeBundle(const QString &name, const QVariantMap &info);

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestBundle::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

QString TestBundle::makeBundle(const QString &name, const QVariantMap &info)
{
    const QString path = m_dir->filePath(name);
    if (!QDir().mkpath(path + QStringLiteral("/Contents")))
        return {};
    QFile file(path + QStringLiteral("/Contents/Info.plist"));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(PropertyList::toXml(info));
    return path;
}

void TestBundle::readsInfoDictionary()
{
    const QString path =
        makeBundle(QStringLiteral("Example.app"),
                   {{QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.example.App")},
                    {QStringLiteral("CFBundleExecutable"), QStringLiteral("Example")},
                    {QStringLiteral("CFBundleShortVersionString"), QStringLiteral("2.1")}});
    const auto bundle = Bundle::open(path);
    QVERIFY(bundle);
    QCOMPARE(bundle->path(), path);
    QCOMPARE(bundle->identifier(), std::optional<QString>(QStringLiteral("com.example.App")));
    QCOMPARE(bundle->stringValue(QStringLiteral("CFBundleShortVersionString")),
             std::optional<QString>(QStringLiteral("2.1")));
    QCOMPARE(bundle->executablePath(),
             std::optional<QString>(path + QStringLiteral("/Contents/MacOS/Example")));
    QCOMPARE(bundle->infoDictionary().size(), 3);
}

void TestBundle::identifierMustBeNonEmptyText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("empty text") << QVariant(QString());
    QTest::newRow("number") << QVariant::fromValue(qint64(7));
    QTest::newRow("array") << QVariant(QVariantList{QStringLiteral("com.example.App")});
}

void TestBundle::identifierMustBeNonEmptyText()
{
    QFETCH(QVariant, value);
    const auto bundle = Bundle::open(
        makeBundle(QStringLiteral("Odd.app"), {{QStringLiteral("CFBundleIdentifier"), value}}));
    QVERIFY(bundle);
    QVERIFY(!bundle->identifier());
}

void TestBundle::versionMustBeText()
{
    const auto bundle = Bundle::open(
        makeBundle(QStringLiteral("Numbered.app"),
                   {{QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.example.n")},
                    {QStringLiteral("CFBundleShortVersionString"), 3.5},
                    {QStringLiteral("CFBundleExecutable"), qint64(1)}}));
    QVERIFY(bundle);
    QVERIFY(bundle->identifier());
    QVERIFY(!bundle->stringValue(QStringLiteral("CFBundleShortVersionString")));
    QVERIFY(!bundle->stringValue(QStringLiteral("Missing")));
    QVERIFY(!bundle->executablePath());
}

void TestBundle::folderWithoutInfoIsABundleWithoutIdentifier()
{
    const QString path = m_dir->filePath(QStringLiteral("Broken.app"));
    QVERIFY(QDir().mkpath(path));
    const auto bundle = Bundle::open(path);
    QVERIFY(bundle);
    QVERIFY(!bundle->identifier());
    QVERIFY(bundle->infoDictionary().isEmpty());
}

void TestBundle::unreadableInfoIsEmpty()
{
    const QString path = m_dir->filePath(QStringLiteral("Garbage.app"));
    QVERIFY(QDir().mkpath(path + QStringLiteral("/Contents")));
    QFile file(path + QStringLiteral("/Contents/Info.plist"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("bplist00 not really");
    file.close();
    const auto bundle = Bundle::open(path);
    QVERIFY(bundle);
    QVERIFY(bundle->infoDictionary().isEmpty());
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

void TestBundle::testProgramHasNoBundleIdentifier()
{
    QVERIFY(!Bundle::mainBundleIdentifier());
}

QTEST_GUILESS_MAIN(TestBundle)
#include "tst_Bundle.moc"
