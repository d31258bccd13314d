// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "Platform/SystemLayout.h"
#include "Removal/UninstallService.h"
#include "ViewModels/AppInfoReader.h"
#include "ViewModels/MainViewModel.h"
#include "Views/IconShape.h"
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
} // namespace

class TestMainViewModel : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;
    std::shared_ptr<HeldUninstall> m_uninstall;

    std::unique_ptr<MainViewModel>
    makeViewModel(std::optional<QString> ownIdentifier = std::nullopt)
    {
        m_uninstall = std::make_shared<HeldUninstall>();
        MainViewModel::Dependencies dependencies;
        dependencies.discovery = std::make_shared<FixedDiscovery>();
        dependencies.uninstall = m_uninstall;
        dependencies.ownBundleIdentifier = [ownIdentifier] { return ownIdentifier; };
        dependencies.fullDiskAccessProbe = [] { return false; };
        auto viewModel = std::make_unique<MainViewModel>(dependencies);
        new QAbstractItemModelTester(viewModel->sessionModel(),
                                     QAbstractItemModelTester::FailureReportingMode::QtTest,
                                     viewModel.get());
        return viewModel;
    }

    QUrl app(const QString &name, const QString &identifier = {})
    {
        FakeMac::App spec;
        spec.path = u"/Applications/"_s + name;
        spec.identifier =
            identifier.isEmpty() ? u"com.example."_s + name.chopped(4).toLower() : identifier;
        return QUrl::fromLocalFile(m_mac->addApp(spec));
    }

    // The sessions' names; the list model the views watch must hold the same sessions.
    static QStringList names(MainViewModel &viewModel)
    {
        QStringList result;
        SessionListModel *model = viewModel.sessionModel();
        for (int row = 0; const auto &session : viewModel.sessions()) {
            result.append(session->appInfo().name);
            const QModelIndex index = model->index(row++);
            if (model->data(index, int(SessionListModel::Role::session)).value<QObject *>() !=
                session.get())
                result.append(u"(not in the list model)"_s);
        }
        if (model->rowCount() != viewModel.sessions().size())
            result.append(u"(list model has %1 rows)"_s.arg(model->rowCount()));
        return result;
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
    }
    void cleanup() { m_mac.reset(); }

    void dropWithoutAppsOnlySetsTheNotice()
    {
        const auto viewModel = makeViewModel();
        const QUrl notes = QUrl::fromLocalFile(m_mac->addFile(u"~/Notes.txt"_s, 3));
        viewModel->handleDroppedFiles({notes});
        QCOMPARE(viewModel->notice(), kOnlyApps);
        QVERIFY(viewModel->sessions().isEmpty());

        viewModel->handleDroppedFiles({app(u"A.app"_s)});
        viewModel->dismissNotice();
        viewModel->handleDroppedFiles(
            {notes, QUrl::fromLocalFile(m_mac->path(u"/Applications/B.APP"_s))});
        QCOMPARE(viewModel->notice(), kOnlyApps); // capitals are not an app
        QCOMPARE(names(*viewModel), QStringList{u"A.app"_s});
    }

    void mixedDropKeepsAppsInOrder()
    {
        const auto viewModel = makeViewModel();
        const QUrl pdf = QUrl::fromLocalFile(m_mac->addFile(u"~/readme.pdf"_s));
        viewModel->handleDroppedFiles({app(u"A.app"_s), pdf, app(u"B.app"_s)});
        QCOMPARE(names(*viewModel), (QStringList{u"A.app"_s, u"B.app"_s}));
        QCOMPARE(viewModel->sessions().at(0)->appInfo().bundleIdentifier, u"scanning..."_s);
        QVERIFY(viewModel->isScanning());
        QVERIFY(!viewModel->canUninstall());
        QTRY_VERIFY(!viewModel->isScanning());
        QVERIFY(!viewModel->notice());
        const auto &first = viewModel->sessions().at(0);
        QCOMPARE(first->appInfo().bundleIdentifier, u"com.example.a"_s);
        QCOMPARE(first->status(), UninstallStatus::ready());
        QCOMPARE(first->logs().constLast().message, u"Found 3 files (300 bytes)"_s);
        QVERIFY(viewModel->canUninstall());
    }

    void duplicatesAreSkipped()
    {
        const auto viewModel = makeViewModel();
        const QUrl a = app(u"A.app"_s);
        viewModel->handleDroppedFiles({a, a});
        QCOMPARE(viewModel->sessions().size(), 1);
        const QUrl dotted = QUrl::fromLocalFile(m_mac->path(u"/Applications/./A.app"_s));
        const QUrl slashed = QUrl::fromLocalFile(m_mac->path(u"/Applications/A.app/"_s));
        viewModel->handleDroppedFiles({dotted, slashed});
        QCOMPARE(viewModel->sessions().size(), 1);
        QVERIFY(!viewModel->notice());
    }

    void unreadableBundlesAreDroppedWithANotice_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("folder without Info.plist") << u"folder"_s;
        QTest::newRow("no identifier") << u"no identifier"_s;
        QTest::newRow("a file") << u"file"_s;
        QTest::newRow("missing") << u"missing"_s;
    }
    void unreadableBundlesAreDroppedWithANotice()
    {
        QFETCH(QString, kind);
        const auto viewModel = makeViewModel();
        const QString macPath = u"/Applications/Broken.app"_s;
        if (kind == u"folder"_s)
            m_mac->addFolder(macPath);
        else if (kind == u"no identifier"_s)
            m_mac->addPlist(macPath + u"/Contents/Info.plist"_s,
                            QVariantMap{{u"CFBundleName"_s, u"Broken"_s}});
        else if (kind == u"file"_s)
            m_mac->addFile(macPath, 10);
        viewModel->handleDroppedFiles({QUrl::fromLocalFile(m_mac->path(macPath))});
        QCOMPARE(names(*viewModel), QStringList{u"Broken.app"_s}); // listed until it is read
        QTRY_VERIFY(viewModel->sessions().isEmpty());
        QCOMPARE(viewModel->notice(), u"Broken.app couldn't be read as an app."_s);
    }

    void refusesToUninstallItself()
    {
        const auto viewModel = makeViewModel(u"com.quenzo.app"_s);
        viewModel->handleDroppedFiles({app(u"Quenzo.app"_s, u"com.quenzo.app"_s), app(u"B.app"_s)});
        QTRY_VERIFY(!viewModel->isScanning());
        QCOMPARE(names(*viewModel), QStringList{u"B.app"_s});
        QCOMPARE(viewModel->notice(), u"Quenzo can't uninstall itself."_s);
    }

    void recordsComeFromTheBundle()
    {
        const auto viewModel = makeViewModel();
        FakeMac::App system;
        system.path = u"/System/Applications/Chess.app"_s;
        system.identifier = u"com.apple.Chess"_s;
        system.version = u"3.18"_s;
        system.format = FakeMac::PlistFormat::binary;
        const QString chess = m_mac->addApp(system);
        m_mac->addSymlink(u"/Applications/Chess.app"_s, chess);
        viewModel->handleDroppedFiles(
            {QUrl::fromLocalFile(chess), app(u"B.app"_s),
             QUrl::fromLocalFile(m_mac->path(u"/Applications/Chess.app"_s))});
        QTRY_VERIFY(!viewModel->isScanning());
        const auto sessions = viewModel->sessions();
        QCOMPARE(sessions.size(), 3);
        QVERIFY(sessions.at(0)->appInfo().isSystemProtected);
        QCOMPARE(sessions.at(0)->appInfo().version, u"3.18"_s);
        QVERIFY(!sessions.at(1)->appInfo().isSystemProtected);
        QVERIFY(sessions.at(2)->appInfo().isSystemProtected); // through the link
        // A dropped link stands for its target; the link is kept to be removed with it.
        QCOMPARE(sessions.at(2)->appInfo().bundlePath, chess);
        QCOMPARE(sessions.at(2)->appInfo().droppedLink, m_mac->path(u"/Applications/Chess.app"_s));
        // Protected apps do not count towards the totals.
        QCOMPARE(viewModel->selectedFilesCount(), 3);
        QCOMPARE(viewModel->totalSize(), 300);
    }

    void uninstallTakesOnlyReadySelectedUnprotectedSessions()
    {
        const auto viewModel = makeViewModel();
        FakeMac::App system;
        system.path = u"/System/Applications/Chess.app"_s;
        system.identifier = u"com.apple.chess"_s;
        viewModel->handleDroppedFiles(
            {app(u"A.app"_s), app(u"B.app"_s), QUrl::fromLocalFile(m_mac->addApp(system))});
        QTRY_VERIFY(!viewModel->isScanning());
        const auto a = viewModel->sessions().at(0);
        // Nothing selected: nothing is sent and the list stays.
        for (const auto &session : viewModel->sessions())
            session->setAllSelected(false);
        viewModel->uninstall();
        QVERIFY(m_uninstall->batches.isEmpty());
        QCOMPARE(viewModel->sessions().size(), 3);

        a->setAllSelected(true);
        viewModel->sessions().at(2)->setAllSelected(true);
        viewModel->uninstall();
        QCOMPARE(names(*viewModel), QStringList{u"A.app"_s});
        QCOMPARE(m_uninstall->batches.size(), 1);
        QCOMPARE(m_uninstall->batches.first(), QList{a});
        QVERIFY(viewModel->isProcessing());
        QVERIFY(!viewModel->canUninstall());

        // A drop while the uninstall runs changes nothing, not even the notice.
        viewModel->handleDroppedFiles({QUrl::fromLocalFile(m_mac->addFile(u"~/Notes.txt"_s))});
        viewModel->handleDroppedFiles({app(u"C.app"_s)});
        QVERIFY(!viewModel->notice());
        QCOMPARE(viewModel->sessions().size(), 1);

        m_uninstall->finish();
        QVERIFY(viewModel->isCompleted());
        QVERIFY(!viewModel->canUninstall());

        viewModel->handleDroppedFiles({QUrl::fromLocalFile(m_mac->path(u"~/Notes.txt"_s))});
        QCOMPARE(viewModel->notice(), kOnlyApps);
        QCOMPARE(names(*viewModel), QStringList{u"A.app"_s}); // the finished run stays

        viewModel->handleDroppedFiles({app(u"C.app"_s)});
        QCOMPARE(names(*viewModel), QStringList{u"C.app"_s}); // a new batch replaces it
    }

    void onlyListedSessionsReachTheController()
    {
        const auto viewModel = makeViewModel();
        viewModel->handleDroppedFiles({app(u"A.app"_s), app(u"B.app"_s)});
        QTRY_VERIFY(!viewModel->isScanning());
        const auto a = viewModel->sessions().at(0);
        const auto b = viewModel->sessions().at(1);
        QSignalSpy willChange(viewModel.get(), &MainViewModel::willChange);

        b->toggleFileSelectionAt(0);
        QCOMPARE(willChange.count(), 1);

        viewModel->removeSession(a.get());
        QCOMPARE(names(*viewModel), QStringList{u"B.app"_s});
        willChange.clear();
        a->toggleFileSelectionAt(0);
        QCOMPARE(willChange.count(), 0);

        viewModel->clearSessions();
        QVERIFY(viewModel->sessions().isEmpty());
        willChange.clear();
        b->toggleFileSelectionAt(0);
        QCOMPARE(willChange.count(), 0);
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
        QCOMPARE(qAlpha(clipped.pixel(1, 1)), 0);
        QCOMPARE(qAlpha(clipped.pixel(98, 98)), 0);
        QCOMPARE(qAlpha(clipped.pixel(50, 0)), 255);
        QCOMPARE(qAlpha(clipped.pixel(50, 50)), 255);
        QCOMPARE(IconShape::rounded("not an image"), QByteArray("not an image"));
    }
};

QTEST_GUILESS_MAIN(TestMainViewModel)
#include "tst_MainViewModel.moc"
