// SPDX-License-Identifier: MIT
#include "Discovery/MatchRules.h"
#include "Platform/SystemLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;
Q_DECLARE_METATYPE(Match)
Q_DECLARE_METATYPE(std::optional<Match>)

namespace {
// The fingerprint of Acme Writer (com.acme.writer) with one helper, one app group and a
// package; Acme Sheets and Acme Writer Pro installed beside it.
Fingerprint writer()
{
    Fingerprint fp;
    fp.bundlePath = u"/Applications/Writer.app"_s;
    fp.mainBundleID = u"com.acme.writer"_s;
    fp.bundleIDs = {u"com.acme.writer"_s, u"com.acme.writer.helper"_s};
    fp.groupIDs = {u"abcde12345.com.acme.shared"_s, u"group.com.acme.writer"_s};
    fp.packageIDs = {u"com.acme.writer.pkg"_s};
    fp.names = fp.executableNames = fp.crashReportNames = {u"writer"_s};
    fp.vendor = u"acme"_s;
    fp.vendorPrefix = u"com.acme."_s;
    fp.shortName = u"writer"_s;
    fp.otherAppIDs = {u"com.acme.sheets"_s, u"com.acme.writer.pro"_s};
    fp.otherVendorAppNames = {u"Acme Sheets"_s, u"Writer Pro"_s};
    fp.groupSharers = {{u"abcde12345.com.acme.shared"_s, {u"Acme Sheets"_s}}};
    fp.orderIdentifiers();
    return fp;
}
} // namespace

class tst_MatchRules : public QObject
{
    Q_OBJECT

private slots:
    void match_data();
    void match();
    void decisionDoesNotDependOnOrderOfIdentifiers();
    void otherAppRefusal_data();
    void otherAppRefusal();
    void crashReport_data();
    void crashReport();
    void launchItem_data();
    void launchItem();
    void verdictAndNotes_data();
    void verdictAndNotes();
};

void tst_MatchRules::match_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("allowNames");
    QTest::addColumn<bool>("withVendor");
    QTest::addColumn<std::optional<Match>>("expected");
    const std::optional<Match> none;
    const std::optional<Match> exact = Match::exact();
    const std::optional<Match> vendor = Match::vendorOnly();
    const auto row = [](const char *name, bool allowNames, std::optional<Match> expected,
                        bool withVendor = true) {
        QTest::addRow("%s%s%s", name, allowNames ? " (names)" : "",
                      withVendor ? "" : " (no vendor)")
            << QString::fromUtf8(name) << allowNames << withVendor << expected;
    };
    row("com.acme.writer", false, exact);
    row("COM.Acme.Writer.plist", false, exact);
    row("com.acme.writer_backup", false, exact);
    row("com.acme.writer-2", false, exact);
    row("com.acme.writer 2", false, exact);
    row("com.acme.writerpro", false, vendor); // no separator: vendor evidence only
    row("com.acme.writer.helper.plist", false, exact);
    row("com.acme.writer.pkg", false, exact);
    row("ABCDE12345.com.acme.writer", false, exact); // team prefix
    row("abcd1234.com.acme.writer", false, none);    // 8 characters are no team prefix
    row("abcde123456.com.acme.writer", false, none); // nor are 11
    row("abcde12345.", false, none);
    row("ABCDE12345.com.acme.shared", false, Match::shared({u"Acme Sheets"_s}));
    row("Writer", false, none); // names only where they are allowed
    row("Writer", true, exact);
    row("W_r-i ter", true, exact);
    row("Writer.savedState", true, exact);
    row("Writer Backup", true, exact);
    row("Writerly", true, none);
    row("com.acme.common", false, vendor);
    row("com.acme.common", true, none, false); // vendor prefix only where there is one
    row("com.acmex.draw", false, none);
    row("org.mozilla.firefox", true, none);
}

void tst_MatchRules::match()
{
    QFETCH(QString, name);
    QFETCH(bool, allowNames);
    QFETCH(bool, withVendor);
    QFETCH(std::optional<Match>, expected);
    Fingerprint fp = writer();
    if (!withVendor)
        fp.vendor = fp.vendorPrefix = QString();
    QCOMPARE(MatchRules::match(name, fp, allowNames), expected);
}

void tst_MatchRules::decisionDoesNotDependOnOrderOfIdentifiers()
{
    // com.acme.writer.helper.plist fits the helper and the main identifier: the longer one
    // decides, so the sharers of the shorter one never leak onto the helper's files.
    Fingerprint fp = writer();
    fp.groupIDs.insert(u"com.acme.writer"_s);
    fp.groupSharers.insert(u"com.acme.writer"_s, {u"Acme Sheets"_s});
    fp.orderIdentifiers();
    QCOMPARE(fp.identifiers.first(), u"abcde12345.com.acme.shared"_s);
    QCOMPARE(MatchRules::match(u"com.acme.writer.helper.plist"_s, fp, false),
             std::optional<Match>(Match::exact()));
    QCOMPARE(MatchRules::match(u"com.acme.writer.plist"_s, fp, false),
             std::optional<Match>(Match::shared({u"Acme Sheets"_s})));
}

void tst_MatchRules::otherAppRefusal_data()
{
    QTest::addColumn<QString>("mainID");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char *name, const char *mainID, const char *other, bool matches) {
        QTest::addRow("%s for %s", name, mainID)
            << QString::fromUtf8(mainID) << QString::fromUtf8(other) << QString::fromUtf8(name)
            << matches;
    };
    row("com.acme.writer.plist", "com.acme.writer", "com.acme.writer.pro", true);
    row("com.acme.writer.pro.plist", "com.acme.writer", "com.acme.writer.pro", false);
    row("com.acme.writer.pro", "com.acme.writer", "com.acme.writer.pro", false); // nor by name
    row("com.acme.writer.pro.plist", "com.acme.writer.pro", "com.acme.writer", true);
    row("com.acme.writer.pro", "com.acme.writer.pro", "com.acme.writer", true);
    row("com.acme.sheets.plist", "com.acme.writer", "com.acme.sheets", false);
}

void tst_MatchRules::otherAppRefusal()
{
    QFETCH(QString, mainID);
    QFETCH(QString, other);
    QFETCH(QString, name);
    QFETCH(bool, matches);
    Fingerprint fp;
    fp.mainBundleID = mainID;
    fp.bundleIDs = {mainID};
    fp.vendor = u"acme"_s;
    fp.vendorPrefix = u"com.acme."_s;
    fp.names = {u"com.acme.writer.pro"_s}; // a name that would take it otherwise
    fp.otherAppIDs = {other};
    fp.orderIdentifiers();
    QCOMPARE(MatchRules::match(name, fp, true).has_value(), matches);
}

void tst_MatchRules::crashReport_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    for (const char *name : {"Writer-2024-05-01-101010.ips", "Writer_2024-05-01_host.crash",
                             "writer.diag", "com.acme.writer.hang"})
        QTest::newRow(name) << QString::fromUtf8(name) << true;
    for (const char *name :
         {"Writer", "WriterHelper.ips", "com.acme.common.ips", "abcde12345.com.acme.shared.ips"})
        QTest::newRow(name) << QString::fromUtf8(name) << false;
}

void tst_MatchRules::crashReport()
{
    QFETCH(QString, name);
    QFETCH(bool, matches);
    const auto found = MatchRules::matchCrashReport(name, writer());
    QCOMPARE(found.has_value(), matches);
    if (found)
        QCOMPARE(found->kind, Match::Kind::exact);
}

void tst_MatchRules::launchItem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantMap>("plist");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char *name, const char *file, const QString &key,
                        const QVariant &value, bool matches) {
        QTest::newRow(name) << QString::fromUtf8(file)
                            << (key.isEmpty() ? QVariantMap() : QVariantMap{{key, value}})
                            << matches;
    };
    const QString args = u"ProgramArguments"_s;
    const QString inBundle = u"/Applications/Writer.app/Contents/MacOS/helper"_s;
    row("by name", "com.acme.writer.agent.plist", {}, {}, true);
    row("by label", "job.plist", u"Label"_s, u"com.acme.writer.sync"_s, true);
    row("by associated bundle", "job.plist", u"AssociatedBundleIdentifiers"_s,
        QVariantList{u"COM.ACME.WRITER"_s}, true);
    row("program inside the bundle", "org.t.plist", args, QVariantList{inBundle, u"-x"_s}, true);
    row("program as Program key", "org.t.plist", u"Program"_s, inBundle, true);
    row("program in a like-named bundle", "org.t.plist", args,
        QVariantList{u"/Applications/Writer.app2/helper"_s}, false);
    row("arguments not all texts", "x.plist", args, QVariantList{inBundle, 3}, false);
    row("unrelated", "org.other.plist", args, QVariantList{u"/usr/bin/true"_s}, false);
    row("names are not allowed", "Writer.plist", {}, {}, false);
}

void tst_MatchRules::launchItem()
{
    QFETCH(QString, name);
    QFETCH(QVariantMap, plist);
    QFETCH(bool, matches);
    QCOMPARE(MatchRules::matchLaunchItem(name, plist, writer(), SystemLayout(u"/"_s)).has_value(), matches);
}

void tst_MatchRules::verdictAndNotes_data()
{
    QTest::addColumn<Match>("match");
    QTest::addColumn<QStringList>("otherVendorApps");
    QTest::addColumn<QString>("vendor");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QString>("note");
    const QStringList two{u"Acme Sheets"_s, u"Acme Slides"_s};
    const QStringList three = two + QStringList{u"Acme Notes"_s};
    QTest::newRow("exact") << Match::exact() << two << "acme" << true << QString();
    QTest::newRow("vendor alone") << Match::vendorOnly() << QStringList() << "acme" << true
                                  << "Shared Acme files, no other Acme apps installed";
    QTest::newRow("vendor with two apps")
        << Match::vendorOnly() << two << "acme" << false
        << "Shared with Acme Sheets and Acme Slides, left unselected";
    QTest::newRow("one sharer") << Match::shared({u"Acme Sheets"_s}) << two << "acme" << false
                                << "Shared with Acme Sheets, left unselected";
    QTest::newRow("three sharers") << Match::shared(three) << three << "acme" << false
                                   << "Shared with 3 other Acme apps, left unselected";
    QTest::newRow("no vendor") << Match::shared(three) << three << "" << false
                               << "Shared with 3 other Vendor apps, left unselected";
}

void tst_MatchRules::verdictAndNotes()
{
    QFETCH(Match, match);
    QFETCH(QStringList, otherVendorApps);
    QFETCH(QString, vendor);
    QFETCH(bool, selected);
    QFETCH(QString, note);
    Fingerprint fp;
    fp.vendor = vendor;
    fp.otherVendorAppNames = otherVendorApps;
    const MatchVerdict verdict = MatchRules::verdict(match, fp);
    QCOMPARE(verdict.isSelected, selected);
    QCOMPARE(verdict.confidence, note.isEmpty() ? 1.0 : 0.7);
    QCOMPARE(verdict.note.value_or(QString()), note);
}

QTEST_GUILESS_MAIN(tst_MatchRules)
#include "tst_MatchRules.moc"
