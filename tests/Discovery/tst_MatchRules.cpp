// SPDX-License-Identifier: MIT
#include "Discovery/MatchRules.h"

#include <QTest>

using Kind = Match::Kind;
Q_DECLARE_METATYPE(Match)
Q_DECLARE_METATYPE(std::optional<Match>)

namespace {
// The fingerprint of Acme Writer (com.acme.writer) with one helper, one app group and a
// package; Acme Sheets and Acme Writer Pro installed beside it.
Fingerprint writer()
{
    Fingerprint fp;
    fp.bundlePath = QStringLiteral("/mac/Applications/Writer.app");
    fp.mainBundleID = QStringLiteral("com.acme.writer");
    fp.bundleIDs = {QStringLiteral("com.acme.writer"), QStringLiteral("com.acme.writer.helper")};
    fp.groupIDs = {QStringLiteral("abcde12345.com.acme.shared"),
                   QStringLiteral("group.com.acme.writer")};
    fp.packageIDs = {QStringLiteral("com.acme.writer.pkg")};
    fp.names = {QStringLiteral("writer")};
    fp.executableNames = {QStringLiteral("writer")};
    fp.crashReportNames = {QStringLiteral("writer")};
    fp.vendor = QStringLiteral("acme");
    fp.vendorPrefix = QStringLiteral("com.acme.");
    fp.shortName = QStringLiteral("writer");
    fp.otherAppIDs = {QStringLiteral("com.acme.sheets"), QStringLiteral("com.acme.writer.pro")};
    fp.otherVendorAppNames = {QStringLiteral("Acme Sheets"), QStringLiteral("Writer Pro")};
    fp.groupSharers = {
        {QStringLiteral("abcde12345.com.acme.shared"), {QStringLiteral("Acme Sheets")}}};
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
    void vendorWithoutOtherApps();
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
    QTest::addColumn<std::optional<Match>>("expected");
    const std::optional<Match> none;
    const std::optional<Match> exact = Match::exact();
    const std::optional<Match> vendor = Match::vendorOnly();
    QTest::newRow("identifier itself") << "com.acme.writer" << false << exact;
    QTest::newRow("upper case") << "COM.Acme.Writer.plist" << false << exact;
    QTest::newRow("dot") << "com.acme.writer.plist" << false << exact;
    QTest::newRow("underscore") << "com.acme.writer_backup" << false << exact;
    QTest::newRow("hyphen") << "com.acme.writer-2" << false << exact;
    QTest::newRow("space") << "com.acme.writer 2" << false << exact;
    QTest::newRow("no separator falls to vendor") << "com.acme.writerpro" << false << vendor;
    QTest::newRow("helper id") << "com.acme.writer.helper.plist" << false << exact;
    QTest::newRow("package id") << "com.acme.writer.pkg" << false << exact;
    QTest::newRow("group, team prefix") << "ABCDE12345.com.acme.writer" << false << exact;
    QTest::newRow("8-char prefix kept") << "abcd1234.com.acme.writer" << false << none;
    QTest::newRow("11-char prefix kept") << "abcde123456.com.acme.writer" << false << none;
    QTest::newRow("prefix needs a rest") << "abcde12345." << false << none;
    QTest::newRow("shared group") << "ABCDE12345.com.acme.shared" << false
                                  << std::optional<Match>(
                                         Match::shared({QStringLiteral("Acme Sheets")}));
    QTest::newRow("name refused without names") << "Writer" << false << none;
    QTest::newRow("name") << "Writer" << true << exact;
    QTest::newRow("name normalised") << "W_r-i ter" << true << exact;
    QTest::newRow("name stem") << "Writer.savedState" << true << exact;
    QTest::newRow("name plus word") << "Writer Backup" << true << exact;
    QTest::newRow("name running on") << "Writerly" << true << none;
    QTest::newRow("vendor prefix") << "com.acme.common" << false << vendor;
    QTest::newRow("other vendor") << "com.acmex.draw" << false << none;
    QTest::newRow("unrelated") << "org.mozilla.firefox" << true << none;
}

void tst_MatchRules::match()
{
    QFETCH(QString, name);
    QFETCH(bool, allowNames);
    QFETCH(std::optional<Match>, expected);
    QCOMPARE(MatchRules::match(name, writer(), allowNames), expected);
}

void tst_MatchRules::decisionDoesNotDependOnOrderOfIdentifiers()
{
    // com.acme.writer.helper.plist fits the helper and the main identifier: the longer one
    // decides, so the sharers of the shorter one never leak onto the helper's files.
    Fingerprint fp = writer();
    fp.groupIDs.insert(QStringLiteral("com.acme.writer"));
    fp.groupSharers.insert(QStringLiteral("com.acme.writer"), {QStringLiteral("Acme Sheets")});
    fp.orderIdentifiers();
    QCOMPARE(fp.identifiers.first(), QStringLiteral("abcde12345.com.acme.shared"));
    QCOMPARE(MatchRules::match(QStringLiteral("com.acme.writer.helper.plist"), fp, false),
             std::optional<Match>(Match::exact()));
    QCOMPARE(MatchRules::match(QStringLiteral("com.acme.writer.plist"), fp, false),
             std::optional<Match>(Match::shared({QStringLiteral("Acme Sheets")})));
}

void tst_MatchRules::otherAppRefusal_data()
{
    QTest::addColumn<QString>("mainID");
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    const QStringList pro{QStringLiteral("com.acme.writer.pro")};
    const QStringList base{QStringLiteral("com.acme.writer")};
    QTest::newRow("own file beside a longer app")
        << "com.acme.writer" << pro << "com.acme.writer.plist" << true;
    QTest::newRow("longer app's file")
        << "com.acme.writer" << pro << "com.acme.writer.pro.plist" << false;
    QTest::newRow("longer app keeps its own")
        << "com.acme.writer.pro" << base << "com.acme.writer.pro.plist" << true;
    QTest::newRow("longer app, own cache")
        << "com.acme.writer.pro" << base << "com.acme.writer.pro" << true;
    QTest::newRow("vendor file of another app")
        << "com.acme.writer" << QStringList{QStringLiteral("com.acme.sheets")}
        << "com.acme.sheets.plist" << false;
    QTest::newRow("refusal is not rescued by name")
        << "com.acme.writer" << pro << "com.acme.writer.pro" << false;
}

void tst_MatchRules::otherAppRefusal()
{
    QFETCH(QString, mainID);
    QFETCH(QStringList, others);
    QFETCH(QString, name);
    QFETCH(bool, matches);
    Fingerprint fp;
    fp.mainBundleID = mainID;
    fp.bundleIDs = {mainID};
    fp.vendor = QStringLiteral("acme");
    fp.vendorPrefix = QStringLiteral("com.acme.");
    fp.names = {QStringLiteral("com.acme.writer.pro")}; // a name that would take it otherwise
    fp.otherAppIDs = QSet<QString>(others.cbegin(), others.cend());
    fp.orderIdentifiers();
    QCOMPARE(MatchRules::match(name, fp, true).has_value(), matches);
}

void tst_MatchRules::vendorWithoutOtherApps()
{
    Fingerprint fp = writer();
    fp.vendor.clear();
    fp.vendorPrefix.clear();
    QVERIFY(!MatchRules::match(QStringLiteral("com.acme.common"), fp, true));
}

void tst_MatchRules::crashReport_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    QTest::newRow("hyphen and date") << "Writer-2024-05-01-101010.ips" << true;
    QTest::newRow("underscore and host") << "Writer_2024-05-01_host.crash" << true;
    QTest::newRow("dot") << "writer.diag" << true;
    QTest::newRow("exactly the process") << "Writer" << false;
    QTest::newRow("no separator") << "WriterHelper.ips" << false;
    QTest::newRow("by identifier") << "com.acme.writer.hang" << true;
    QTest::newRow("vendor evidence only") << "com.acme.common.ips" << false;
    QTest::newRow("shared group only") << "abcde12345.com.acme.shared.ips" << false;
}

void tst_MatchRules::crashReport()
{
    QFETCH(QString, name);
    QFETCH(bool, matches);
    const auto found = MatchRules::matchCrashReport(name, writer());
    QCOMPARE(found.has_value(), matches);
    if (found)
        QCOMPARE(found->kind, Kind::exact);
}

void tst_MatchRules::launchItem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantMap>("plist");
    QTest::addColumn<bool>("matches");
    const auto args = [](const QString &first) {
        return QVariantMap{
            {QStringLiteral("ProgramArguments"), QVariantList{first, QStringLiteral("--x")}}};
    };
    QTest::newRow("by name") << "com.acme.writer.agent.plist" << QVariantMap() << true;
    QTest::newRow("by label") << "job.plist"
                              << QVariantMap{{QStringLiteral("Label"),
                                              QStringLiteral("com.acme.writer.sync")}}
                              << true;
    QTest::newRow("by associated bundle")
        << "job.plist"
        << QVariantMap{{QStringLiteral("AssociatedBundleIdentifiers"),
                        QVariantList{QStringLiteral("COM.ACME.WRITER")}}}
        << true;
    QTest::newRow("program inside the bundle")
        << "org.toolkit.daemon.plist"
        << args(QStringLiteral("/Applications/Writer.app/Contents/MacOS/helper")) << true;
    QTest::newRow("program in a like-named bundle")
        << "org.toolkit.daemon.plist" << args(QStringLiteral("/Applications/Writer.app2/helper"))
        << false;
    QTest::newRow("program as Program key")
        << "x.plist"
        << QVariantMap{{QStringLiteral("Program"),
                        QStringLiteral("/Applications/Writer.app/Contents/MacOS/w")}}
        << true;
    QTest::newRow("arguments not all texts")
        << "x.plist"
        << QVariantMap{{QStringLiteral("ProgramArguments"),
                        QVariantList{QStringLiteral("/Applications/Writer.app/x"), 3}}}
        << false;
    QTest::newRow("unrelated") << "org.other.plist" << args(QStringLiteral("/usr/bin/true"))
                               << false;
    QTest::newRow("names are not allowed") << "Writer.plist" << QVariantMap() << false;
}

void tst_MatchRules::launchItem()
{
    QFETCH(QString, name);
    QFETCH(QVariantMap, plist);
    QFETCH(bool, matches);
    Fingerprint fp = writer();
    fp.bundlePath = QStringLiteral("/Applications/Writer.app"); // real root is "/" here
    QCOMPARE(MatchRules::matchLaunchItem(name, plist, fp).has_value(), matches);
}

void tst_MatchRules::verdictAndNotes_data()
{
    QTest::addColumn<Match>("match");
    QTest::addColumn<QStringList>("otherVendorApps");
    QTest::addColumn<QString>("vendor");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<double>("confidence");
    QTest::addColumn<QString>("note");
    const QStringList two{QStringLiteral("Acme Sheets"), QStringLiteral("Acme Slides")};
    const QStringList three = two + QStringList{QStringLiteral("Acme Notes")};
    QTest::newRow("exact") << Match::exact() << two << "acme" << true << 1.0 << QString();
    QTest::newRow("vendor alone") << Match::vendorOnly() << QStringList() << "acme" << true << 0.7
                                  << "Shared Acme files, no other Acme apps installed";
    QTest::newRow("vendor with two apps")
        << Match::vendorOnly() << two << "acme" << false << 0.7
        << "Shared with Acme Sheets and Acme Slides, left unselected";
    QTest::newRow("one sharer") << Match::shared({QStringLiteral("Acme Sheets")}) << two << "acme"
                                << false << 0.7 << "Shared with Acme Sheets, left unselected";
    QTest::newRow("three sharers") << Match::shared(three) << three << "acme" << false << 0.7
                                   << "Shared with 3 other Acme apps, left unselected";
    QTest::newRow("no vendor") << Match::shared(three) << three << "" << false << 0.7
                               << "Shared with 3 other Vendor apps, left unselected";
}

void tst_MatchRules::verdictAndNotes()
{
    QFETCH(Match, match);
    QFETCH(QStringList, otherVendorApps);
    QFETCH(QString, vendor);
    QFETCH(bool, selected);
    QFETCH(double, confidence);
    QFETCH(QString, note);
    Fingerprint fp;
    fp.vendor = vendor;
    fp.otherVendorAppNames = otherVendorApps;
    const MatchVerdict verdict = MatchRules::verdict(match, fp);
    QCOMPARE(verdict.isSelected, selected);
    QCOMPARE(verdict.confidence, confidence);
    QCOMPARE(verdict.note.value_or(QString()), note);
}

QTEST_GUILESS_MAIN(tst_MatchRules)
#include "tst_MatchRules.moc"
