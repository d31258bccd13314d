// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "Platform/RunningApplications.h"
#include "Removal/ProcessService.h"
#include "Removal/UninstallService.h"
#include "ViewModels/LeftoverSessions.h"
#include "ViewModels/MainViewModel.h"
#include "Views/IconShape.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QAbstractItemModelTester>
#include <QBuffer>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString kOnlyApps = u"Only apps can be quenzed. Drag an app from your Applications folder."_s;

// Finds a fixed list of items for every app, so totals are predictable.
class FixedDiscovery : public FileDiscoveryService
{
public:
    using FileDiscoveryService::FileDiscoveryService;
    QList<FileItem> discoverFiles(const AppInfo &app) const override
    {
        QList<FileItem> items = FileDiscoveryService::discoverFiles(app);
        items.first().size = 0; // the sizes below are the ones these tests count
        for (qint64 size : {100, 200}) {
            FileItem file;
            file.path = app.bundlePath + u".leftover"_s + QString::number(size);
            file.size = size;
            items.append(file);
        }
        return items;
    }
};

// Records the batch and leaves it processing until finish() is called.
class HeldUninstall : public UninstallService
{
public:
    using UninstallService::UninstallService;
    QFuture<void> uninstall(const QList<QSharedPointer<UninstallSession>> &sessions) override
    {
        batches.append(sessions);
        for (const auto &session : sessions)
            session->setStatus(UninstallStatus::processing());
        return QtFuture::makeReadyFuture();
    }
    void finish()
    {
        for (const auto &session : batches.constLast())
            session->setStatus(UninstallStatus::completed());
    }
    QList<QList<QSharedPointer<UninstallSession>>> batches;
};

// A process of the deleted app's identifier that never quits; counts the requests to quit.
class StillRunning : public RunningApplications
{
public:
    QAtomicInt signalled;
    QList<RunningApplication> list() const override
    {
        RunningApplication tracer;
        tracer.processIdentifier = 4242;
        tracer.bundleIdentifier = u"com.gone.tracer"_s;
        return {tracer};
    }
    qint64 ownProcessIdentifier() const override { return 1; }
    void terminate(const RunningApplication &) override { signalled.ref(); }
    void forceTerminate(const RunningApplication &) override { signalled.ref(); }
    bool isTerminated(const RunningApplication &) const override { return false; }
};
} // namespace

class TestMainViewModel : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;
    std::shared_ptr<HeldUninstall> m_uninstall;

    std::unique_ptr<MainViewModel> makeViewModel()
    {
        m_uninstall = std::make_shared<HeldUninstall>(m_mac->layout());
        MainViewModel::Dependencies dependencies;
        dependencies.discovery = std::make_shared<FixedDiscovery>(m_mac->layout());
        dependencies.uninstall = m_uninstall;
        // Quenzo itself, as app() names Quenzo.app.
        dependencies.ownBundleIdentifier = [] { return u"com.example.quenzo"_s; };
        dependencies.fullDiskAccessProbe = [] { return false; };
        auto viewModel = std::make_unique<MainViewModel>(m_mac->layout(), dependencies);
        new QAbstractItemModelTester(viewModel->sessionModel(),
                                     QAbstractItemModelTester::FailureReportingMode::QtTest,
                                     viewModel.get());
        return viewModel;
    }

    QUrl app(const QString &name)
    {
        FakeMac::App spec;
        spec.path = u"/Applications/"_s + name;
        spec.identifier = u"com.example."_s + name.chopped(4).toLower();
        return QUrl::fromLocalFile(m_mac->addApp(spec));
    }

    // A dropped item: "A.app" an app in /Applications, "file:", "folder:", "no identifier:"
    // (an Info.plist without one) or "missing:" a Mac path.
    QUrl dropped(const QString &item)
    {
        const QString kind = item.section(u':', 0, 0), macPath = item.section(u':', 1);
        if (kind == u"file"_s)
            m_mac->addFile(macPath, 10);
        else if (kind == u"folder"_s)
            m_mac->addFolder(macPath);
        else if (kind == u"no identifier"_s)
            m_mac->addPlist(macPath + u"/Contents/Info.plist"_s,
                            QVariantMap{{u"CFBundleName"_s, u"B"_s}});
        else if (macPath.isEmpty())
            return app(item);
        return QUrl::fromLocalFile(m_mac->path(macPath));
    }

    // The sessions' names; the list model the views watch must hold the same sessions.
    static QStringList names(MainViewModel &viewModel)
    {
        QStringList result;
        const SessionListModel &model = *viewModel.sessionModel();
        const auto sessions = viewModel.sessions();
        for (int row = 0; row < std::max(model.rowCount(), int(sessions.size())); ++row) {
            const auto session = sessions.value(row);
            const auto role = [&](SessionListModel::Role r) {
                return model.index(row).data(int(r));
            };
            result.append(
                session &&
                        role(SessionListModel::Role::session).value<QObject *>() == session.get() &&
                        role(SessionListModel::Role::displayName) == session->displayName()
                    ? session->appInfo().name
                    : u"(not in the list model)"_s);
        }
        return result;
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
    }

    // What a drop lists at once (every bundle, in order, each once), what stays listed once the
    // bundles are read and discovered, and the notice.
    void drop_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<QStringList>("kept");
        QTest::addColumn<QString>("notice");
        const QString broken = u"Broken.app couldn't be read as an app."_s;
        const QStringList none, brokenApp{u"Broken.app"_s}, ab{u"A.app"_s, u"B.app"_s};
        QTest::newRow("a document; capitals are not an app")
            << QStringList{u"file:~/Notes.txt"_s, u"missing:/Applications/B.APP"_s} << none << none
            << kOnlyApps;
        QTest::newRow("apps among documents, in order")
            << QStringList{u"A.app"_s, u"file:~/readme.pdf"_s, u"B.app"_s} << ab << ab << QString();
        QTest::newRow("the same bundle three ways")
            << QStringList{u"A.app"_s, u"missing:/Applications/./A.app"_s,
                           u"missing:/Applications/A.app/"_s}
            << QStringList{u"A.app"_s} << QStringList{u"A.app"_s} << QString();
        QTest::newRow("itself") << QStringList{u"Quenzo.app"_s, u"B.app"_s}
                                << QStringList{u"Quenzo.app"_s, u"B.app"_s}
                                << QStringList{u"B.app"_s} << u"Quenzo can't uninstall itself."_s;
        for (const QString &kind : {u"folder"_s, u"no identifier"_s, u"file"_s, u"missing"_s})
            QTest::newRow(qPrintable(kind)) << QStringList{kind + u":/Applications/Broken.app"_s}
                                            << brokenApp << none << broken;
    }
    void drop()
    {
        QFETCH(QStringList, items);
        QFETCH(QStringList, kept);
        const auto viewModel = makeViewModel();
        QList<QUrl> urls;
        for (const QString &item : std::as_const(items))
            urls.append(dropped(item));
        viewModel->handleDroppedFiles(urls);
        QTEST(names(*viewModel), "listed");
        QCOMPARE(viewModel->canUninstall(), false);
        QTRY_VERIFY(!viewModel->isScanning());
        QTRY_COMPARE(names(*viewModel), kept);
        QTEST(viewModel->notice().value_or(QString()), "notice");
        QCOMPARE(viewModel->canUninstall(), !kept.isEmpty());
        for (const auto &session : viewModel->sessions()) {
            QCOMPARE(session->appInfo().bundleIdentifier,
                     u"com.example."_s + session->displayName().toLower());
            QCOMPARE(session->status(), UninstallStatus::ready());
            QCOMPARE(session->logs().constLast().message, u"Found 3 files (300 bytes)"_s);
        }
    }

    // The records come from the bundle (a system app, also through a link to it); system apps
    // count towards no total and never reach the uninstall; only ready, selected sessions do,
    // and the others leave the list.
    void uninstallTakesOnlyReadySelectedUnprotectedSessions()
    {
        const auto viewModel = makeViewModel();
        FakeMac::App system;
        system.path = u"/System/Applications/Chess.app"_s;
        system.identifier = u"com.apple.Chess"_s;
        const QString chess = m_mac->addApp(system);
        const QString link = m_mac->addSymlink(u"/Applications/Chess.app"_s, chess);
        viewModel->handleDroppedFiles({QUrl::fromLocalFile(chess), app(u"A.app"_s), app(u"B.app"_s),
                                       QUrl::fromLocalFile(link)});
        QTRY_VERIFY(!viewModel->isScanning());
        const auto sessions = viewModel->sessions();
        // A dropped link stands for its target; the link is kept to be removed with it.
        QCOMPARE(sessions.at(3)->appInfo().bundlePath, chess);
        QCOMPARE(sessions.at(3)->appInfo().droppedLink, link);
        QCOMPARE(viewModel->selectedFilesCount(), 6);
        QCOMPARE(viewModel->totalSize(), 600);

        for (const auto &session : sessions)
            session->setAllSelected(session == sessions.at(0));
        viewModel->uninstall(); // nothing that may go is selected: nothing is sent, the list stays
        QVERIFY(m_uninstall->batches.isEmpty());
        QCOMPARE(viewModel->sessions().size(), 4);

        sessions.at(1)->setAllSelected(true);
        viewModel->uninstall();
        QCOMPARE(names(*viewModel), QStringList{u"A.app"_s});
        QCOMPARE(m_uninstall->batches.size(), 1);
        QCOMPARE(m_uninstall->batches.first(), QList{sessions.at(1)});
        QVERIFY(viewModel->isProcessing());
        QVERIFY(!viewModel->canUninstall());
        // Only the listed sessions reach the controller.
        QSignalSpy willChange(viewModel.get(), &MainViewModel::willChange);
        sessions.at(2)->toggleFileSelectionAt(0);
        QCOMPARE(willChange.count(), 0);
        sessions.at(1)->toggleFileSelectionAt(0);
        QCOMPARE(willChange.count(), 1);
        // A drop while the uninstall runs changes nothing, not even the notice.
        viewModel->handleDroppedFiles({dropped(u"file:~/Notes.txt"_s)});
        viewModel->handleDroppedFiles({app(u"C.app"_s)});
        QVERIFY(!viewModel->notice());
        QCOMPARE(viewModel->sessions().size(), 1);

        m_uninstall->finish();
        QVERIFY(viewModel->isCompleted());
        QVERIFY(!viewModel->canUninstall());
        viewModel->handleDroppedFiles({dropped(u"file:~/Notes.txt"_s)});
        QCOMPARE(viewModel->notice(), kOnlyApps);
        QCOMPARE(names(*viewModel), QStringList{u"A.app"_s}); // the finished run stays
        viewModel->handleDroppedFiles({app(u"C.app"_s)});
        QCOMPARE(names(*viewModel), QStringList{u"C.app"_s}); // a new batch replaces it
    }

    // "Add App…" lists the layout's Applications folder and one level below, by name, never an
    // app inside an app; the ticked apps come back as one drop.
    void appPickerListsTheApplicationsFolder()
    {
        for (const QString &name : {u"b.app"_s, u"A.app"_s, u"Utilities/C.app"_s})
            app(name);
        app(u"A.app/Contents/Helper.app"_s);
        const auto viewModel = makeViewModel();
        AppPickerModel &picker = *viewModel->appPicker();
        QAbstractItemModelTester tester(&picker,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        picker.reload();
        QTRY_COMPARE(picker.rowCount(), 3);
        QStringList listed;
        for (const auto role : {AppPickerModel::Role::name, AppPickerModel::Role::folder})
            for (int row = 0; row < 3; ++row)
                listed << picker.data(picker.index(row), int(role)).toString();
        QCOMPARE(listed, (QStringList{u"A"_s, u"b"_s, u"C"_s, u"/Applications"_s,
                                      u"/Applications"_s, u"/Applications/Utilities"_s}));
        picker.toggle(2);
        QCOMPARE(picker.checkedUrls(),
                 QList{QUrl::fromLocalFile(m_mac->path(u"/Applications/Utilities/C.app"_s))});
    }

    void iconCornersAreCut()
    {
        QImage square(100, 100, QImage::Format_ARGB32);
        square.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        square.save(&buffer, "PNG");
        const QImage clipped = QImage::fromData(IconShape::rounded(png));
        QCOMPARE(clipped.size(), square.size());
        const auto alpha = [&clipped](int x, int y) { return qAlpha(clipped.pixel(x, y)); };
        QCOMPARE((QList{alpha(1, 1), alpha(98, 98), alpha(50, 0), alpha(50, 50)}),
                 (QList{0, 0, 255, 255}));
        QCOMPARE(IconShape::rounded("not an image"), QByteArray("not an image"));
    }

    // Leftovers of deleted apps as sessions of the usual uninstall: the finder's selection is kept,
    // an app bundle is never taken over and a group with nothing left to move is dropped; no
    // session has a bundle.
    void leftoversOfDeletedApps()
    {
        const FileItem strong = SessionRun::item(u"/a"_s, FileCategory::containers);
        FileItem weak = SessionRun::item(u"/b"_s);
        weak.isSelected = false;
        const FileItem bundle = SessionRun::item(u"/c.app"_s, FileCategory::application);
        const auto entries = LeftoverSessions::fromGroups(
            {OrphanGroup{u"Tracer"_s, u"com.gone.tracer"_s, {strong, weak}},
             OrphanGroup{u"Gone"_s, {}, {bundle}}, OrphanGroup{u"BrushCo"_s, {}, {bundle, weak}}});
        QStringList shown;
        for (const LeftoverSessions::Entry &entry : entries) {
            QVERIFY(entry.app.bundlePath.isEmpty());
            shown << entry.app.name;
            for (const FileItem &item : entry.items)
                shown << item.path + (item.isSelected ? u" selected"_s : QString());
        }
        QCOMPARE(shown,
                 (QStringList{u"Tracer"_s, u"/a selected"_s, u"/b"_s, u"BrushCo"_s, u"/b"_s}));
    }

    // A program still running under the deleted app's identifier (as the Mac reports it) is not
    // the leftovers' to stop.
    void removalQuitsNoProcessOfTheSameIdentifier()
    {
        TemporaryFakeMac &mac = *m_mac;
        FakeMacRemovalTools::install(mac);
        const QString cache = mac.addTextFile(u"~/Library/Caches/com.gone.tracer/c"_s, "x");
        const auto applications = std::make_shared<StillRunning>();
        const auto entries = LeftoverSessions::fromGroups({OrphanGroup{
            u"Tracer"_s, u"com.gone.tracer"_s, {SessionRun::item(QFileInfo(cache).path())}}});
        UninstallService::Dependencies dependencies;
        dependencies.process = std::make_shared<const ProcessService>(
            mac.layout(),
            ProcessService::Dependencies{applications, {}, [](std::chrono::milliseconds) {}});
        UninstallService service(mac.layout(), dependencies);
        const auto session = SessionRun::readySession(entries.first().app, entries.first().items);
        QVERIFY(SessionRun::toCompletion(service, {session}));
        QCOMPARE(session->removedCount(), 1);
        QVERIFY(!QFileInfo::exists(cache));
        QCOMPARE(applications->signalled.loadRelaxed(), 0);
    }
};

QTEST_GUILESS_MAIN(TestMainViewModel)
#include "tst_MainViewModel.moc"
