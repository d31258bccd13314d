// SPDX-License-Identifier: MIT
#include "Discovery/MatchRules.h"
#include "Platform/SystemLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;
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
    void launchItem_data();
    void launchItem();
};

// A file or folder name, matched as an entry of a location (names allowed unless "how" is
// empty) or as a crash report ("crash"); for Writer, a Writer without a vendor ("no vendor"),
// a Writer whose name is Writer Pro's identifier ("named") or for Writer Pro ("as pro").
void tst_MatchRules::match_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("how");
    QTest::addColumn<std::optional<Match>>("expected");
    const std::optional<Match> none;
    const std::optional<Match> exact = Match::exact();
    const std::optional<Match> vendor = Match::vendorOnly();
    const auto row = [](const char *name, const char *how, std::optional<Match> expected) {
        QTest::addRow("%s %s", name, how)
            << QString::fromUtf8(name) << QString::fromUtf8(how) << expected;
    };
    row("com.acme.writer", "", exact);
    row("COM.Acme.Writer.plist", "", exact);
    row("com.acme.writer_backup", "", exact);
    row("com.acme.writer-2", "", exact);
    row("com.acme.writer 2", "", exact);
    row("com.acme.writerpro", "", vendor); // no separator: vendor evidence only
    row("com.acme.writer.helper.plist", "", exact);
    row("com.acme.writer.pkg", "", exact);
    row("ABCDE12345.com.acme.writer", "", exact); // team prefix
    row("abcd1234.com.acme.writer", "", none);    // 8 characters are no team prefix
    row("abcde123456.com.acme.writer", "", none); // nor are 11
    row("abcde12345.", "", none);
    row("ABCDE12345.com.acme.shared", "", Match::shared({u"Acme Sheets"_s}));
    row("Writer", "", none); // names only where they are allowed
    row("Writer", "names", exact);
    row("W_r-i ter", "names", exact);
    row("Writer.savedState", "names", exact);
    row("Writer Backup", "names", exact);
    row("Writerly", "names", none);
    row("com.acme.common", "", vendor);
    row("com.acme.common", "no vendor", none); // vendor prefix only where there is one
    row("com.acmex.draw", "", none);
    row("com.acme.writer.pro.plist", "", none); // Writer Pro's, and its identifier is longer
    row("com.acme.writer.pro", "named", none);  // nor by name
    row("writer.sync.agent.plist", "names", exact);
    row("writer.sync.agent.plist", "other id", none); // another app's identifier claims the name
    row("com.acme.sheets.plist", "", none);
    row("com.acme.writer.pro.plist", "as pro", exact);
    row("com.acme.writer.pro", "as pro", exact);
    row("org.mozilla.firefox", "names", none);
    for (const char *name : {"Writer-2024-05-01-101010.ips", "Writer_2024-05-01_host.crash",
                             "writer.diag", "com.acme.writer.hang"})
        row(name, "crash", exact);
    for (const char *name :
         {"Writer", "WriterHelper.ips", "com.acme.common.ips", "abcde12345.com.acme.shared.ips"})
        row(name, "crash", none);
}

void tst_MatchRules::match()
{
    QFETCH(QString, name);
    QFETCH(QString, how);
    QFETCH(std::optional<Match>, expected);
    Fingerprint fp = writer();
    if (how == u"no vendor"_s)
        fp.vendor = fp.vendorPrefix = QString();
    if (how == u"named"_s)
        fp.names.insert(u"com.acme.writer.pro"_s);
    if (how == u"other id"_s)
        fp.otherAppIDs.insert(u"writer.sync.agent"_s);
    if (how == u"as pro"_s) {
        fp.mainBundleID = u"com.acme.writer.pro"_s;
        fp.bundleIDs = {fp.mainBundleID};
        fp.otherAppIDs = {u"com.acme.writer"_s};
        fp.orderIdentifiers();
    }
    QCOMPARE(how == u"crash"_s ? MatchRules::matchCrashReport(name, fp)
                               : MatchRules::match(name, fp, how != u""_s),
             expected);
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
    QCOMPARE(MatchRules::matchLaunchItem(name, plist, writer(), SystemLayout(u"/"_s)).has_value(),
             matches);
}

QTEST_GUILESS_MAIN(tst_MatchRules)
#include "tst_MatchRules.moc"
