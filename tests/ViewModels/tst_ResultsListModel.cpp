// SPDX-License-Identifier: MIT
// The lists of the results screen: the files, the summary, the log, and the symbols they show.
#include "Discovery/DiscoveryResults.h"
#include "ViewModels/LogListModel.h"
#include "ViewModels/ResultsListModel.h"
#include "ViewModels/SummaryListModel.h"
#include "ViewModels/SymbolImages.h"
#include "fakemac/FakeMac.h"

#include <QAbstractItemModelTester>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

using Role = ResultsListModel::Role;

class ResultsListModelTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::unique_ptr<FakeMac> m_mac = std::make_unique<FakeMac>(m_dir.path());

    FileItem item(FileCategory category, const QString &macPath = u"~/x"_s, qint64 size = 0)
    {
        QList<FileItem> found(1);
        found[0].category = category;
        found[0].path = m_mac->path(macPath);
        found[0].size = size;
        describePlaces(found, m_mac->layout()); // as discovery leaves it
        return found[0];
    }
    static QVariant at(const ResultsListModel &model, int row, Role role)
    {
        return model.data(model.index(row), int(role));
    }
    static QStringList kinds(const ResultsListModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(at(model, row, Role::kind).toString()); // the enumerator's key
        return list;
    }

private slots:
    // One app: its files under category headers in declaration order, each row saying in words
    // what it shows.
    void singleSessionGroupsByCategoryInDeclarationOrder()
    {
        FileItem cache = item(FileCategory::caches, u"~/Library/Caches/com.acme.writer"_s, 2000);
        cache.isSelected = false;
        cache.reason = u"bundle identifier com.acme.writer"_s;
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles(
            {cache, item(FileCategory::application), item(FileCategory::caches)});
        session.setStatus(UninstallStatus::ready());
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&session});
        QVERIFY(model.byCategory());
        QCOMPARE(kinds(model), (QStringList{u"CategoryHeader"_s, u"File"_s, u"CategoryHeader"_s,
                                            u"File"_s, u"File"_s}));
        const auto text = [&model](int row, Role role) { return at(model, row, role).toString(); };
        QCOMPARE(
            (QStringList{text(0, Role::title), text(2, Role::title), text(2, Role::detail),
                         text(2, Role::symbol), text(2, Role::selectNoneName),
                         text(3, Role::accessibleName), text(3, Role::accessibleDescription)}),
            (QStringList{u"Application"_s, u"Caches"_s, u"2 items"_s, u"tray.fill"_s,
                         u"Select none in Caches"_s, u"~/Library/Caches/com.acme.writer"_s,
                         u"2 KB, found by bundle identifier com.acme.writer, not selected"_s}));
        QCOMPARE(at(model, 1, Role::showsCategory).toBool(), false);
        using Position = ResultsListModel::GroupPosition;
        QCOMPARE(at(model, 3, Role::groupPosition).value<Position>(), Position::First);
        QCOMPARE(at(model, 4, Role::groupPosition).value<Position>(), Position::Last);
        // A header's None acts on its group only; a header is not toggled.
        model.setAllSelected(2, false);
        model.toggle(2);
        QCOMPARE(session.selectedFilesCount(), 1);
        model.toggle(3);
        model.setAllSelected(0, true);
        QCOMPARE(session.selectedFilesCount(), 2);
    }

    void severalSessionsShowStateRows()
    {
        AppInfo system, writer;
        system.bundlePath = m_mac->path(QStringLiteral("/System/Applications/Chess.app"));
        system.isSystemProtected = true;
        writer.name = u"Writer.app"_s;
        UninstallSession scanning(AppInfo{}), protectedApp(system);
        auto *ready = new UninstallSession(writer);
        ready->setDiscoveredFiles({item(FileCategory::logs), item(FileCategory::caches)});
        ready->setStatus(UninstallStatus::ready());
        protectedApp.setDiscoveredFiles({item(FileCategory::application)});
        protectedApp.setStatus(UninstallStatus::ready());
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&scanning, ready, &protectedApp});
        QCOMPARE(kinds(model),
                 (QStringList{u"AppHeader"_s, u"Scanning"_s, u"AppHeader"_s, u"File"_s, u"File"_s,
                              u"AppHeader"_s, u"ProtectedApp"_s}));
        QCOMPARE(at(model, 3, Role::showsCategory).toBool(), true);
        // Totals, All and None only for a ready app that is not part of the system.
        QCOMPARE(at(model, 0, Role::showsSelectionButtons).toBool(), false);
        QVERIFY(at(model, 2, Role::detail).toString().startsWith(QStringLiteral("2 of 2 · ")));
        QCOMPARE(at(model, 5, Role::showsSelectionButtons).toBool(), false);
        // A session deleted while listed leaves rows that show nothing and do nothing.
        delete ready;
        QVERIFY(!at(model, 3, Role::displayPath).isValid());
        model.toggle(3);
        model.setAllSelected(2, false);
        model.setSessions({});
    }

    void badgeTakesTheFirstThatApplies_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("isProtected");
        QTest::addColumn<QString>("note");
        QTest::addColumn<double>("confidence");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("badge"); // text, then tone
        const QString macOS = u"• Part of macOS - Cannot delete Warning"_s;
        QTest::newRow("system over note")
            << "/System/Library/x" << false << "shared" << 0.7 << true << macOS;
        QTest::newRow("protected flag") << "~/x" << true << "" << 1.0 << true << macOS;
        QTest::newRow("note over admin, selected")
            << "/Library/LaunchDaemons/x" << false << "shared" << 1.0 << true
            << "• shared Secondary";
        QTest::newRow("note, not selected")
            << "~/x" << false << "shared" << 1.0 << false << "• shared Warning";
        QTest::newRow("admin over low confidence")
            << "/Library/Preferences/x" << false << "" << 0.7 << true << "• Requires admin Accent";
        QTest::newRow("0.79 is low")
            << "~/x" << false << "" << 0.79 << true << "• Low confidence Warning";
        QTest::newRow("0.8 is not") << "~/x" << false << "" << 0.8 << true << " None";
    }
    void badgeTakesTheFirstThatApplies()
    {
        QFETCH(QString, macPath);
        QFETCH(QString, note);
        QFETCH(QString, badge);
        FileItem file = item(FileCategory::other, macPath);
        QFETCH(bool, isProtected);
        file.isProtected = file.isProtected || isProtected;
        if (!note.isEmpty())
            file.note = note;
        QFETCH(double, confidence);
        file.confidence = confidence;
        QFETCH(bool, selected);
        file.isSelected = selected;
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles({file});
        ResultsListModel model;
        model.setSessions({&session});
        QCOMPARE(at(model, 1, Role::badgeText).toString() + u' ' +
                     at(model, 1, Role::badgeTone).toString(),
                 badge);
        QCOMPARE(at(model, 1, Role::isSIPProtected).toBool(), badge.contains(u"macOS"));
    }

    void selectionChangesAreReportedOncePerTurn()
    {
        UninstallSession a(AppInfo{}), b(AppInfo{});
        a.setStatus(UninstallStatus::ready());
        b.setStatus(UninstallStatus::ready());
        a.setDiscoveredFiles(QList<FileItem>(1000, item(FileCategory::caches)));
        b.setDiscoveredFiles({item(FileCategory::logs)});
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&a, &b});
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

        model.setAllSelected(0, false);
        QCOMPARE(a.selectedFilesCount(), 0);
        QCOMPARE(changed.count(), 0);
        QVERIFY(changed.wait());
        // One range over the changed rows, then one per app header.
        QCOMPARE(changed.count(), 3);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 1000);
        QCOMPARE(at(model, 1, Role::isSelected).toBool(), false);
        QVERIFY(at(model, 0, Role::detail).toString().startsWith(QStringLiteral("0 of 1000")));
    }

    // An app joining, finishing its scan or leaving moves only its own rows, never resets the
    // model: a view keeps its delegates, scroll position and focus.
    void changesMoveOnlyTheirOwnRows()
    {
        UninstallSession a(AppInfo{}), b(AppInfo{}), c(AppInfo{});
        for (UninstallSession *ready : {&a, &c}) {
            ready->setDiscoveredFiles({item(FileCategory::caches)});
            ready->setStatus(UninstallStatus::ready());
        }
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&a, &b});
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserts(&model, &QAbstractItemModel::rowsInserted);
        const auto count = [](const QSignalSpy &spy) {
            int rows = 0;
            for (const auto &signal : spy)
                rows += signal.at(2).toInt() - signal.at(1).toInt() + 1;
            return rows;
        };
        model.setSessions({&a, &b, &c}); // two rows in
        b.setDiscoveredFiles({item(FileCategory::logs), item(FileCategory::caches)});
        b.setStatus(UninstallStatus::ready()); // its scanning row out, two file rows in
        QCOMPARE(kinds(model), (QStringList{u"AppHeader"_s, u"File"_s, u"AppHeader"_s, u"File"_s,
                                            u"File"_s, u"AppHeader"_s, u"File"_s}));
        model.setSessions({&a, &c}); // three rows out
        QCOMPARE(kinds(model).size(), 4);
        QCOMPARE((QList{int(reset.count()), count(removals), count(inserts)}), (QList{0, 4, 4}));
    }

    void sortAndFilterArrangeTheItems_data()
    {
        QTest::addColumn<ResultsListModel::SortOrder>("order");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("paths");
        using Order = ResultsListModel::SortOrder;
        const QString big = u"~/Library/Logs/Beta"_s, small = u"~/Library/Caches/alpha"_s,
                      mid = u"~/Library/Caches/gamma"_s;
        QTest::newRow("found") << Order::Found << QString() << QStringList{big, small, mid};
        QTest::newRow("name") << Order::Name << QString() << QStringList{small, big, mid};
        QTest::newRow("size") << Order::Size << QString() << QStringList{big, mid, small};
        QTest::newRow("category") << Order::Category << QString() << QStringList{small, mid, big};
        QTest::newRow("filter on path") << Order::Found << u"GAMMA"_s << QStringList{mid};
        QTest::newRow("filter on category") << Order::Name << u"crash"_s << QStringList{big};
    }
    void sortAndFilterArrangeTheItems()
    {
        QFETCH(ResultsListModel::SortOrder, order);
        QFETCH(QString, filter);
        QFETCH(QStringList, paths);
        UninstallSession a(AppInfo{}), other(AppInfo{});
        a.setDiscoveredFiles({item(FileCategory::logs, u"~/Library/Logs/Beta"_s, 300),
                              item(FileCategory::caches, u"~/Library/Caches/alpha"_s, 100),
                              item(FileCategory::caches, u"~/Library/Caches/gamma"_s, 200)});
        a.setStatus(UninstallStatus::ready());
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&a, &other}); // by app: one run of rows under one header
        model.setSortOrder(order);
        model.setFilterText(filter);
        QStringList shown; // between the app's header and the other app's header and scanning row
        for (int row = 1; row < model.rowCount() - 2; ++row)
            shown.append(at(model, row, Role::displayPath).toString());
        QCOMPARE(shown, paths);
    }

    // The summary's rows follow the sessions without a reset; the last row alone has no divider.
    void summaryRowsFollowTheSessions()
    {
        AppInfo info;
        info.name = u"C.app"_s;
        UninstallSession a(AppInfo{}), b(AppInfo{}), c(info);
        SummaryListModel model;
        QAbstractItemModelTester tester(&model);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const auto cell = [&model](int row, SummaryListModel::Role role) {
            return model.data(model.index(row), int(role));
        };
        model.setSessions({&a});
        model.setSessions({&a, &b, &c});
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(!cell(0, SummaryListModel::Role::isLast).toBool());
        model.setSessions({&c});
        QCOMPARE(cell(0, SummaryListModel::Role::name).toString(), u"C"_s);
        QVERIFY(cell(0, SummaryListModel::Role::isLast).toBool());
        QCOMPARE(reset.count(), 0);
    }

    // One app's log entries stand alone; with several, each entry joins its app's block under a
    // heading, also when it comes later. Times show hours and minutes only.
    void logEntriesJoinTheirSessionsBlock()
    {
        AppInfo info[3];
        info[0].name = u"A"_s, info[1].name = u"B"_s, info[2].name = u"C"_s;
        UninstallSession a(info[0]), b(info[1]), c(info[2]);
        LogListModel model;
        QAbstractItemModelTester tester(&model);
        const auto cell = [&model](int row, LogListModel::Role role) {
            return model.data(model.index(row), int(role));
        };
        const auto rows = [&] {
            QStringList list;
            for (int row = 0; row < model.rowCount(); ++row) {
                const QString message = cell(row, LogListModel::Role::message).toString();
                list.append(cell(row, LogListModel::Role::isHeading).toBool() ? u'#' + message
                                                                              : message);
            }
            return list;
        };
        model.setSessions({&a});
        QVERIFY(model.isEmpty());
        a.addLog(u"Found 2 files (1 KB)"_s, true);
        QCOMPARE(cell(0, LogListModel::Role::symbol).toString(), u"checkmark.circle.fill"_s);
        b.addLog(u"b1"_s, true);
        model.setSessions({&a, &b, &c});
        c.addLog(u"c1"_s, false);
        a.addLog(u"a2"_s, false);
        QCOMPARE(rows(), (QStringList{u"#A"_s, u"Found 2 files (1 KB)"_s, u"a2"_s, u"#B"_s, u"b1"_s,
                                      u"#C"_s, u"c1"_s}));
        QCOMPARE(cell(2, LogListModel::Role::isSuccess).toBool(), false);
        QCOMPARE(cell(2, LogListModel::Role::symbol).toString(), u"xmark.circle.fill"_s);
        const QString time = LogListModel::timeText(QDateTime(QDate(2024, 5, 1), QTime(14, 7, 33)));
        QVERIFY2(time.contains(u"07"_s) && !time.contains(u"33"_s) && !time.contains(u"2024"_s),
                 qPrintable(time));
    }

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

QTEST_GUILESS_MAIN(ResultsListModelTest)
#include "tst_ResultsListModel.moc"
