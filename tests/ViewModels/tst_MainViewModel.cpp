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
        SessionListModel *model = viewModel.sessionModel();
        for (int row = 0; const auto &session : viewModel.sessions()) {
            result.append(session->appInfo().name);
            const QModelIndex index = model->index(row++);
            if (model->data(index, int(SessionListModel::Role::session)).value<QObject *>() !=
                    session.get() ||
                model->data(index, int(SessionListModel::Role::displayName)) !=
                    session->displayName())
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
        system.version = u"3.18"_s;
        system.format = FakeMac::PlistFormat::binary;
        const QString chess = m_mac->addApp(system);
        const QString link = m_mac->addSymlink(u"/Applications/Chess.app"_s, chess);
        viewModel->handleDroppedFiles({QUrl::fromLocalFile(chess), app(u"A.app"_s), app(u"B.app"_s),
                                       QUrl::fromLocalFile(link)});
        QTRY_VERIFY(!viewModel->isScanning());
        const auto sessions = viewModel->sessions();
        QCOMPARE(sessions.size(), 4);
        QCOMPARE(sessions.at(0)->appInfo().version, u"3.18"_s);
        for (const int row : {0, 3})
            QVERIFY(sessions.at(row)->appInfo().isSystemProtected);
        QVERIFY(!sessions.at(1)->appInfo().isSystemProtected);
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
};

QTEST_GUILESS_MAIN(TestMainViewModel)
#include "tst_MainViewModel.moc"
