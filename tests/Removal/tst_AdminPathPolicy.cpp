// SPDX-License-Identifier: MIT
#include "Platform/SystemLayout.h"
#include "Removal/AdminPathPolicy.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// Paths in the tables are written with "R" for the fake Mac's root and "~" for its home, so the
// same rows hold for every temporary folder.
class TestAdminPathPolicy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isAllowed_data();
    void isAllowed();
    void refusesPathsWithControlCharacters_data();
    void refusesPathsWithControlCharacters();
    void refusesLoneSurrogates();
    void followsTheHomeFolderOfTheMoment();
    void darwinDirectoriesLoseOneTrailingSlash();
    void ignoresMalformedDarwinDirectories();

    void isValidPackageID_data();
    void isValidPackageID();

private:
    [[nodiscard]] QString resolved(const QString &path) const;
    void writeDarwinDirectories(const QByteArray &contents) const;

    std::unique_ptr<QTemporaryDir> m_root;
};

void TestAdminPathPolicy::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(m_root->isValid());
    SystemLayout::set(m_root->path(), m_root->path() + QStringLiteral("/Users/tester"));
    writeDarwinDirectories(QStringLiteral("%1/private/var/folders/ab/xyz/C/\n"
                                          "%1/private/var/folders/ab/xyz/T/\n")
                               .arg(SystemLayout::root())
                               .toUtf8());
}

void TestAdminPathPolicy::cleanup()
{
    SystemLayout::reset();
    m_root.reset();
}

QString TestAdminPathPolicy::resolved(const QString &path) const
{
    if (path.startsWith(QLatin1Char('R')))
        return SystemLayout::root() + path.mid(1);
    if (path.startsWith(QLatin1Char('~')))
        return SystemLayout::home() + path.mid(1);
    return path;
}

void TestAdminPathPolicy::writeDarwinDirectories(const QByteArray &contents) const
{
    QVERIFY(QDir().mkpath(SystemLayout::root() + QStringLiteral("/.fakemac")));
    QFile file(SystemLayout::root() + QStringLiteral("/.fakemac/darwin-user-dirs"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(contents);
}

void TestAdminPathPolicy::isAllowed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("allowed");

    const auto row = [](const char *path, bool allowed) {
        QTest::newRow(path) << QString::fromUtf8(path) << allowed;
    };
    // Shape of the text.
    row("", false);
    row("Applications/Foo.app", false);
    row("R/Applications/Foo.app", true);
    row("R/Applications/Foo.app/", false);
    row("R/Applications//Foo.app", false);
    row("R/Applications/./Foo.app", false);
    row("R/Applications/../etc/x", false);
    row("R/Applications/Foo.app/..", false);
    row("R/Applications/..Foo.app", true);
    // Allowed roots themselves, and depth.
    row("R/Applications", false);
    row("R/Applications/Foo.app/Contents/Info.plist", true);
    row("~/Applications", false);
    row("~/Applications/Foo.app", true);
    row("~/Library", false);
    row("~/Library/Caches", false);
    row("~/Library/Caches/com.example.app", true);
    row("~/Library2/Caches/x", false);
    row("~/Documents/report.pdf", false);
    row("~", false);
    row("~/.config/example", false);
    row("R/Library/Application Support", false);
    row("R/Library/Application Support/Example", true);
    row("R/Library/LaunchDaemons/com.example.daemon.plist", true);
    row("R/Library/Screen Savers/Example.saver", true);
    row("R/Library/Fonts/Example.ttf", false);
    row("R/Library", false);
    row("R/Library/CachesX/com.example", false);
    // Denied roots and their children win over the allowed ones, whatever the case.
    row("~/Library/Keychains/login.keychain-db", false);
    row("~/Library/keychains/login.keychain-db", false);
    row("~/Library/Mail", false);
    row("~/Library/Messages/chat.db", false);
    row("~/Library/MailExample/x", true);
    row("R/Library/Application Support/Apple/x", false);
    row("R/Library/Application Support/com.apple.TCC/TCC.db", false);
    row("R/Library/Application Support/AppleExample", true);
    row("R/Library/Preferences/SystemConfiguration/preferences.plist", false);
    // Outside every root.
    row("R/System/Library/x", false);
    row("R/usr/local/bin/tool", false);
    row("R/private/etc/hosts", false);
    row("/Applications/Foo.app", false);
    row("/etc/passwd", false);
    // The per-user cache and temporary folders: entries inside, not the folders themselves.
    row("R/private/var/folders/ab/xyz/C", false);
    row("R/private/var/folders/ab/xyz/C/com.example.app", true);
    row("R/private/var/folders/ab/xyz/T/com.example.app", true);
    row("R/private/var/folders/ab/xyz/X/com.example.app", false);
    row("R/private/var/folders/ab/xyz", false);
}

void TestAdminPathPolicy::isAllowed()
{
    QFETCH(QString, path);
    QFETCH(bool, allowed);
    QCOMPARE(AdminPathPolicy::isAllowed(resolved(path)), allowed);
    // As root the per-user folders would be root's own: the privileged helper never has them.
    const bool perUser = path.startsWith(QStringLiteral("R/private/var/folders/"));
    QCOMPARE(AdminPathPolicy::isAllowed(resolved(path), AdminPathPolicy::Scope::systemOnly),
             allowed && !perUser);
}

void TestAdminPathPolicy::refusesPathsWithControlCharacters_data()
{
    QTest::addColumn<QString>("character");
    const auto row = [](const char *name, char16_t c) { QTest::newRow(name) << QString(QChar(c)); };
    row("tab", u'\t');
    row("line feed", u'\n');
    row("nul", u'\0');
    row("delete", u'\x7f');
    row("next line", u'\x85');
    row("line separator", u'\u2028');
    row("zero width space", u'\u200b');
    row("right-to-left override", u'\u202e');
}

void TestAdminPathPolicy::refusesPathsWithControlCharacters()
{
    QFETCH(QString, character);
    const QString allowed = resolved(QStringLiteral("~/Library/Caches/com.example"));
    QVERIFY(AdminPathPolicy::isAllowed(allowed));
    QVERIFY(!AdminPathPolicy::isAllowed(allowed + character + QStringLiteral("x")));
    QVERIFY(!AdminPathPolicy::isAllowed(allowed + character));
}

void TestAdminPathPolicy::refusesLoneSurrogates()
{
    const QString base = resolved(QStringLiteral("~/Library/Caches/com.example"));
    QVERIFY(!AdminPathPolicy::isAllowed(base + QChar(0xD800)));
    QVERIFY(!AdminPathPolicy::isAllowed(base + QChar(0xDC00) + QStringLiteral("x")));
    // A well-formed pair outside the basic plane is an ordinary character.
    QVERIFY(AdminPathPolicy::isAllowed(base + QString::fromUcs4(U"\U0001F600")));
}

void TestAdminPathPolicy::followsTheHomeFolderOfTheMoment()
{
    const QString cache = resolved(QStringLiteral("~/Library/Caches/com.example"));
    QVERIFY(AdminPathPolicy::isAllowed(cache));
    SystemLayout::set(SystemLayout::root(), SystemLayout::root() + QStringLiteral("/Users/other"));
    QVERIFY(!AdminPathPolicy::isAllowed(cache));
    QVERIFY(AdminPathPolicy::isAllowed(resolved(QStringLiteral("~/Library/Caches/com.example"))));
}

void TestAdminPathPolicy::darwinDirectoriesLoseOneTrailingSlash()
{
    writeDarwinDirectories(
        QStringLiteral("%1/var/C//\n%1/var/T\n").arg(SystemLayout::root()).toUtf8());
    const QStringList expected{SystemLayout::root() + QStringLiteral("/var/C/"),
                               SystemLayout::root() + QStringLiteral("/var/T")};
    QCOMPARE(AdminPathPolicy::userDarwinDirectories(), expected);
}

void TestAdminPathPolicy::ignoresMalformedDarwinDirectories()
{
    // "/" would otherwise become an empty root under which every path lies one level deep.
    writeDarwinDirectories(QByteArrayLiteral("/\nrelative/T/\n"));
    QVERIFY(!AdminPathPolicy::isAllowed(QStringLiteral("/etc")));
    QVERIFY(!AdminPathPolicy::isAllowed(resolved(QStringLiteral("R/etc"))));
    writeDarwinDirectories(QStringLiteral("%1/var/../etc/\n").arg(SystemLayout::root()).toUtf8());
    SystemLayout::set(SystemLayout::root(), SystemLayout::home());
    QVERIFY(!AdminPathPolicy::isAllowed(resolved(QStringLiteral("R/var/../etc/x"))));
    QVERIFY(!AdminPathPolicy::isAllowed(resolved(QStringLiteral("R/etc/x"))));
}

void TestAdminPathPolicy::isValidPackageID_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("valid");

    const auto row = [](const char *name, const QString &id, bool valid) {
        QTest::newRow(name) << id << valid;
    };
    row("reverse dns", QStringLiteral("com.example.pkg"), true);
    row("non-latin letters", QStringLiteral("com.例え.パッケージ"), true);
    row("letter outside the basic plane", QString::fromUcs4(U"com.\U00010400.pkg"), true);
    row("apple package", QStringLiteral("com.apple.pkg.Safari"), false);
    row("apple package any case", QStringLiteral("COM.Apple.PKG.Safari"), false);
    row("apple but not a package", QStringLiteral("com.apple.pkgx"), true);
    row("empty", QString(), false);
    row("leading hyphen", QStringLiteral("-rf"), false);
    row("leading combining mark", QStringLiteral("\u0301abc"), true);
    row("single quote", QStringLiteral("com.example'pkg"), false);
    row("semicolon", QStringLiteral("com.example;rm"), false);
    row("newline", QStringLiteral("com.example\npkg"), false);
    row("zero width joiner", QStringLiteral("com.example\u200dpkg"), false);
    row("emoji", QString::fromUcs4(U"com.\U0001F600"), false);
    row("lone surrogate", QStringLiteral("com.example") + QChar(0xD800), false);
}

void TestAdminPathPolicy::isValidPackageID()
{
    QFETCH(QString, id);
    QFETCH(bool, valid);
    QCOMPARE(AdminPathPolicy::isValidPackageID(id), valid);
}

QTEST_GUILESS_MAIN(TestAdminPathPolicy)
#include "tst_AdminPathPolicy.moc"
