// SPDX-License-Identifier: MIT
#include "ViewModels/ResultsListModel.h"
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
    std::unique_ptr<FakeMac> m_mac;

    FileItem item(FileCategory category, const QString &macPath = QStringLiteral("~/x"))
    {
        FileItem file;
        file.category = category;
        file.path = m_mac->path(macPath);
        return file;
    }
    static QVariant at(const ResultsListModel &model, int row, Role role)
    {
        return model.data(model.index(row), int(role));
    }
    static QStringList kinds(const ResultsListModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(at(model, row, Role::kind).toString());
        return list;
    }

private slots:
    void initTestCase()
    {
        m_mac = std::make_unique<FakeMac>(m_dir.path());
        m_mac->activate();
    }

    void singleSessionGroupsByCategoryInDeclarationOrder()
    {
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles({item(FileCategory::caches), item(FileCategory::application),
                                    item(FileCategory::caches)});
        session.setStatus(UninstallStatus::ready());
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&session});
        QVERIFY(model.byCategory());
        QCOMPARE(kinds(model), (QStringList{u"categoryHeader"_s, u"file"_s, u"categoryHeader"_s,
                                            u"file"_s, u"file"_s}));
        QCOMPARE(at(model, 0, Role::title).toString(), QStringLiteral("Application"));
        QCOMPARE(at(model, 2, Role::title).toString(), QStringLiteral("Caches"));
        QCOMPARE(at(model, 2, Role::detail).toString(), QStringLiteral("2 items"));
        QCOMPARE(at(model, 2, Role::symbol).toString(), QStringLiteral("tray.fill"));
        QCOMPARE(at(model, 1, Role::showsCategory).toBool(), false);
        QCOMPARE(at(model, 3, Role::groupPosition).toString(), QStringLiteral("first"));
        QCOMPARE(at(model, 4, Role::groupPosition).toString(), QStringLiteral("last"));
    }

    void severalSessionsShowStateRows()
    {
        AppInfo system;
        system.bundlePath = m_mac->path(QStringLiteral("/System/Applications/Chess.app"));
        UninstallSession scanning(AppInfo{}), ready(AppInfo{}), protectedApp(system);
        ready.setDiscoveredFiles({item(FileCategory::logs), item(FileCategory::caches)});
        ready.setStatus(UninstallStatus::ready());
        protectedApp.setDiscoveredFiles({item(FileCategory::application)});
        protectedApp.setStatus(UninstallStatus::ready());
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&scanning, &ready, &protectedApp});
        QCOMPARE(kinds(model),
                 (QStringList{u"appHeader"_s, u"scanning"_s, u"appHeader"_s, u"file"_s, u"file"_s,
                              u"appHeader"_s, u"protectedApp"_s}));
        QCOMPARE(at(model, 3, Role::showsCategory).toBool(), true);
        // Totals, All and None only for a ready app that is not part of the system.
        QCOMPARE(at(model, 0, Role::showsSelectionButtons).toBool(), false);
        QVERIFY(at(model, 2, Role::detail).toString().startsWith(QStringLiteral("2 of 2 · ")));
        QCOMPARE(at(model, 5, Role::showsSelectionButtons).toBool(), false);

        scanning.setDiscoveredFiles({item(FileCategory::other)});
        scanning.setStatus(UninstallStatus::ready());
        QCOMPARE(kinds(model).mid(0, 3), (QStringList{u"appHeader"_s, u"file"_s, u"appHeader"_s}));
    }

    void badgeTakesTheFirstThatApplies_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("isProtected");
        QTest::addColumn<QString>("note");
        QTest::addColumn<double>("confidence");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tone");
        QTest::newRow("system over note") << "/System/Library/x" << false << "shared" << 0.7 << true
                                          << "• Part of macOS - Cannot delete"
                                          << "orange";
        QTest::newRow("protected flag")
            << "~/x" << true << "" << 1.0 << true << "• Part of macOS - Cannot delete"
            << "orange";
        QTest::newRow("note over admin, selected")
            << "/Library/LaunchDaemons/x" << false << "shared" << 1.0 << true << "• shared"
            << "secondary";
        QTest::newRow("note, not selected")
            << "~/x" << false << "shared" << 1.0 << false << "• shared"
            << "orange";
        QTest::newRow("admin over low confidence")
            << "/Library/Preferences/x" << false << "" << 0.7 << true << "• Requires admin"
            << "blue";
        QTest::newRow("0.79 is low") << "~/x" << false << "" << 0.79 << true << "• Low confidence"
                                     << "orange";
        QTest::newRow("0.8 is not") << "~/x" << false << "" << 0.8 << true << ""
                                    << "none";
    }
    void badgeTakesTheFirstThatApplies()
    {
        QFETCH(QString, macPath);
        QFETCH(bool, isProtected);
        QFETCH(QString, note);
        QFETCH(double, confidence);
        QFETCH(bool, selected);
        QFETCH(QString, text);
        QFETCH(QString, tone);
        FileItem file = item(FileCategory::other, macPath);
        file.isProtected = isProtected;
        if (!note.isEmpty())
            file.note = note;
        file.confidence = confidence;
        file.isSelected = selected;
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles({file});
        ResultsListModel model;
        model.setSessions({&session});
        QCOMPARE(at(model, 1, Role::badgeText).toString(), text);
        QCOMPARE(at(model, 1, Role::badgeTone).toString(), tone);
        QCOMPARE(at(model, 1, Role::isSIPProtected).toBool(), text.contains(u"macOS"));
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

    void headerButtonsActOnTheirGroup()
    {
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles(
            {item(FileCategory::caches), item(FileCategory::logs), item(FileCategory::caches)});
        ResultsListModel model;
        model.setSessions({&session});
        const int cachesHeader = kinds(model).lastIndexOf(QStringLiteral("categoryHeader")) - 0;
        QCOMPARE(at(model, cachesHeader, Role::title).toString(),
                 QStringLiteral("Logs & Crash Reports"));
        model.setAllSelected(0, false); // Caches
        QCOMPARE(session.selectedFilesCount(), 1);
        QVERIFY(session.discoveredFiles().at(1).isSelected);
        model.toggle(1);
        model.toggle(0); // a header: nothing
        QCOMPARE(session.selectedFilesCount(), 2);
        model.setAllSelected(0, true);
        QCOMPARE(session.selectedFilesCount(), 3);
    }

    void removedSessionLeavesNoDanglingRows()
    {
        auto *session = new UninstallSession(AppInfo{});
        session->setDiscoveredFiles({item(FileCategory::caches)});
        ResultsListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({session});
        delete session;
        QVERIFY(!at(model, 1, Role::displayPath).isValid());
        model.toggle(1);
        model.setSessions({});
        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_GUILESS_MAIN(ResultsListModelTest)
#include "tst_ResultsListModel.moc"
