// SPDX-License-Identifier: MIT
// quenzo-screenshots OUTDIR [DESCRIPTION.json]: renders every state of the window to PNG files,
// with the real discovery and uninstall on a fake Mac laid out from the description (the demo
// Mac by default).
#include "ViewModels/MainViewModel.h"
#include "ViewModels/PutBackPresenter.h"
#include "Views/QuenzoUi.h"
#include "WindowFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(QuenzoPlugin)

namespace {
void settle(int milliseconds = 600)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

// Processes events until `done` holds; false after a minute.
template <typename Done> bool waitUntil(Done done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > 60'000)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

class Shooter
{
public:
    Shooter(QQmlApplicationEngine &engine, WindowFixture &fixture, QString outDir)
        : m_window(qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst())),
          m_fixture(fixture), m_viewModel(*fixture.viewModel()), m_outDir(std::move(outDir))
    {}

    bool shoot(const QString &name)
    {
        settle();
        const QString file = m_outDir + u'/' + name + QStringLiteral(".png");
        const bool saved = m_window->grabWindow().save(file);
        qInfo("%s %s", saved ? "wrote" : "FAILED", qPrintable(file));
        return saved;
    }
    QObject *find(const QString &objectName) const
    {
        if (QObject *found = m_window->findChild<QObject *>(objectName))
            return found;
        return findItem(m_window->contentItem(), objectName); // list delegates have no parent
    }
    static QQuickItem *findItem(QQuickItem *item, const QString &objectName)
    {
        if (item->objectName() == objectName && item->isVisible())
            return item;
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = findItem(child, objectName))
                return found;
        }
        return nullptr;
    }
    // Starts a new batch with these apps of the fake Mac ("/Applications/Writer.app").
    void dropWithoutWaiting(const QStringList &macPaths)
    {
        m_viewModel.clearSessions();
        // The previous results screen must be gone before the next one is looked up.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QList<QUrl> urls;
        for (const QString &macPath : macPaths)
            urls.append(QUrl::fromLocalFile(m_fixture.root() + macPath));
        m_viewModel.handleDroppedFiles(urls);
    }
    bool drop(const QStringList &macPaths)
    {
        dropWithoutWaiting(macPaths);
        return waitUntil([this] { return !m_viewModel.isScanning(); });
    }
    bool uninstall()
    {
        m_viewModel.uninstall();
        return waitUntil([this] { return m_viewModel.isCompleted(); });
    }
    MainViewModel &viewModel() { return m_viewModel; }

private:
    QQuickWindow *m_window;
    WindowFixture &m_fixture;
    MainViewModel &m_viewModel;
    QString m_outDir;
};

bool setProperty(QObject *object, const char *name, const QVariant &value)
{
    const bool set = object && object->setProperty(name, value);
    if (!set)
        qWarning("could not set %s", name);
    return set;
}

const QString kWriter = QStringLiteral("/Applications/Writer.app");
const QString kSheets = QStringLiteral("/Applications/Acme Sheets.app");
const QString kChatter = QStringLiteral("/Applications/Chatter.app");
const QString kNotepad = QStringLiteral("/Applications/Utilities/Notepad Plus.app");
const QString kTunnel = QStringLiteral("/Applications/Tunnel Guard.app");
const QString kMixer = QStringLiteral("/Applications/Studio Mixer.app");
const QString kChess = QStringLiteral("/System/Applications/Chess.app");

// The drop zone with and without Full Disk Access and under a drag.
bool shootDropZone(Shooter &shooter, WindowFixture &fixture)
{
    MainViewModel &viewModel = shooter.viewModel();
    bool ok = shooter.shoot(QStringLiteral("01-drop-zone-without-full-disk-access"));
    fixture.setProperty("fullDiskAccess", true);
    viewModel.refreshFullDiskAccess();
    ok &= shooter.shoot(QStringLiteral("02-drop-zone"));
    QObject *mainView = shooter.find(QStringLiteral("mainView"));
    setProperty(mainView, "isTargeted", true);
    ok &= shooter.shoot(QStringLiteral("03-drop-hover"));
    setProperty(mainView, "isTargeted", false);
    return ok;
}

// Scanning, one app, the overlay, five apps (one still scanning), the system app.
bool shootResults(Shooter &shooter, WindowFixture &fixture)
{
    MainViewModel &viewModel = shooter.viewModel();
    fixture.setProperty("fullDiskAccess", false);
    viewModel.refreshFullDiskAccess();
    fixture.holdScan(QStringLiteral("com.acme.writer"));
    shooter.dropWithoutWaiting({kWriter});
    bool ok = shooter.shoot(QStringLiteral("04-scanning"));
    fixture.releaseScans();
    ok &= waitUntil([&] { return !viewModel.isScanning(); });
    ok &= shooter.shoot(QStringLiteral("05-one-app-by-category"));
    QObject *mainView = shooter.find(QStringLiteral("mainView"));
    setProperty(mainView, "isTargeted", true);
    ok &= shooter.shoot(QStringLiteral("06-drop-overlay"));
    setProperty(mainView, "isTargeted", false);

    fixture.setProperty("fullDiskAccess", true);
    viewModel.refreshFullDiskAccess();
    // The first app stays scanning, so its section at the top shows it.
    fixture.holdScan(QStringLiteral("com.acme.writer"));
    shooter.dropWithoutWaiting({kWriter, kSheets, kChatter, kTunnel, kMixer});
    ok &= waitUntil([&] {
        return std::count_if(viewModel.sessions().cbegin(), viewModel.sessions().cend(),
                             [](const auto &session) {
                                 return session->status() == UninstallStatus::ready();
                             }) == 4;
    });
    ok &= shooter.shoot(QStringLiteral("07-five-apps"));
    fixture.releaseScans();
    ok &= waitUntil([&] { return !viewModel.isScanning(); });

    ok &= shooter.drop({kChess});
    ok &= shooter.shoot(QStringLiteral("08-system-app"));
    return ok;
}

// The confirmation with and without the administrator paragraph.
bool shootConfirmations(Shooter &shooter)
{
    bool ok = shooter.drop({kChatter, kNotepad});
    QObject *results = shooter.find(QStringLiteral("resultsView"));
    setProperty(results, "showingConfirmation", true);
    ok &= shooter.shoot(QStringLiteral("09-confirmation"));
    setProperty(results, "showingConfirmation", false);
    settle(300);

    ok &= shooter.drop({kTunnel});
    results = shooter.find(QStringLiteral("resultsView"));
    ok &= shooter.shoot(QStringLiteral("10-admin-items"));
    setProperty(results, "showingConfirmation", true);
    ok &= shooter.shoot(QStringLiteral("11-confirmation-administrator"));
    setProperty(results, "showingConfirmation", false);
    settle(300);
    return ok;
}

// A real uninstall held at the administrator prompt, then completed; then one whose prompt
// is cancelled, so the administrator items of one of three apps stay.
bool shootUninstalls(Shooter &shooter, WindowFixture &fixture)
{
    MainViewModel &viewModel = shooter.viewModel();
    bool ok = shooter.drop({kTunnel, kChatter, kNotepad});
    fixture.setProperty("holdPrivilegedStep", true);
    viewModel.uninstall();
    ok &= waitUntil([&] { return viewModel.isProcessing(); });
    ok &= shooter.shoot(QStringLiteral("12-uninstalling"));
    fixture.setProperty("holdPrivilegedStep", false);
    ok &= waitUntil([&] { return viewModel.isCompleted(); });
    ok &= shooter.shoot(QStringLiteral("13-completed"));
    QObject *results = shooter.find(QStringLiteral("resultsView"));
    setProperty(results, "showingLogs", true);
    ok &= shooter.shoot(QStringLiteral("14-log-sheet"));
    setProperty(results, "showingLogs", false);
    settle(300);

    fixture.setProperty("privilegedShell", QStringLiteral("cancel"));
    ok &= shooter.drop({kWriter, kSheets, kMixer});
    ok &= shooter.uninstall();
    ok &= shooter.shoot(QStringLiteral("15-completed-with-errors"));
    return ok;
}
// The new states of the window: the dark appearance, twenty apps completed, long names, the
// row menu, keyboard focus on a row, the "Add App…" dialog.
bool shootMore(Shooter &shooter, WindowFixture &fixture)
{
    MainViewModel &viewModel = shooter.viewModel();
    const QString longName = QStringLiteral(
        "/Applications/Extraordinarily Long Application Name for Professional Studio Work.app");
    fixture.addApp(longName, QStringLiteral("com.example.extraordinarily-long-identifier"),
                   QStringLiteral("12.4.1"), QStringLiteral("#e0a21b"));
    fixture.addFile(QStringLiteral("~/Library/Application Support/Extraordinarily Long Application "
                                   "Name/Projects/Deeply/Nested/Folder/With/Many/Levels/state.db"),
                    4096);
    fixture.addFile(QStringLiteral("~/Library/Caches/com.example.extraordinarily-long-identifier/"
                                   "fsCachedData"),
                    90000);
    // The apps above are in the Trash by now: two fresh ones with files in several places.
    const QString notes = QStringLiteral("/Applications/Notes Studio.app");
    const QString photos = QStringLiteral("/Applications/Photo Lab.app");
    for (const auto &[path, identifier, color] :
         {std::tuple{notes, QStringLiteral("com.example.notes"), "#5b6cff"},
          {photos, QStringLiteral("com.example.photolab"), "#2fb86f"}}) {
        fixture.addApp(path, identifier, QStringLiteral("2.1"), QLatin1String(color));
        for (const QString &place :
             {QStringLiteral("~/Library/Caches/"), QStringLiteral("~/Library/Preferences/"),
              QStringLiteral("~/Library/HTTPStorages/")})
            fixture.addFile(place + identifier + QStringLiteral("/data"), 20000);
    }
    bool ok = shooter.drop({longName, notes});
    ok &= shooter.shoot(QStringLiteral("17-long-names"));

    ok &= shooter.drop({notes});
    auto *checkBox = qobject_cast<QQuickItem *>(shooter.find(QStringLiteral("fileCheckBox")));
    if (checkBox)
        checkBox->forceActiveFocus(Qt::TabFocusReason);
    ok &= checkBox != nullptr && shooter.shoot(QStringLiteral("18-keyboard-focus"));
    QObject *list = shooter.find(QStringLiteral("resultsList"));
    QObject *row = shooter.find(QStringLiteral("fileRow"));
    ok &= list && row &&
          QMetaObject::invokeMethod(list, "openMenu", Q_ARG(QVariant, fixture.root() + kWriter),
                                    Q_ARG(QVariant, QVariant::fromValue(row)), Q_ARG(QVariant, 120),
                                    Q_ARG(QVariant, 20));
    ok &= shooter.shoot(QStringLiteral("19-row-menu"));
    if (QObject *menu = shooter.find(QStringLiteral("rowMenu")))
        QMetaObject::invokeMethod(menu, "close");

    viewModel.clearSessions();
    settle(300);
    QObject *dialog = shooter.find(QStringLiteral("addAppDialog"));
    ok &= dialog && QMetaObject::invokeMethod(dialog, "open");
    ok &= shooter.shoot(QStringLiteral("20-add-app-dialog"));
    if (dialog)
        QMetaObject::invokeMethod(dialog, "close");
    settle(300);

    QStringList twenty;
    for (int i = 1; i <= 20; ++i) {
        const QString name = QStringLiteral("Utility %1").arg(i);
        twenty.append(QStringLiteral("/Applications/") + name + QStringLiteral(".app"));
        fixture.addApp(twenty.last(), QStringLiteral("com.example.utility%1").arg(i), {},
                       QStringLiteral("#%1").arg(0x3366ff + i * 0x0a0f00, 6, 16, QLatin1Char('0')));
        fixture.addFile(QStringLiteral("~/Library/Caches/com.example.utility%1/cache").arg(i),
                        1000 * i);
    }
    ok &= shooter.drop(twenty);
    fixture.setProperty("privilegedShell", QStringLiteral("run"));
    ok &= shooter.uninstall();
    ok &= shooter.shoot(QStringLiteral("21-twenty-apps-completed"));

    // The same window in the dark appearance.
    WindowFixture::setAppearance(QStringLiteral("dark"));
    ok &= shooter.shoot(QStringLiteral("22-dark-completed"));
    viewModel.clearSessions();
    ok &= shooter.shoot(QStringLiteral("23-dark-drop-zone"));
    ok &= shooter.drop({notes, photos});
    ok &= shooter.shoot(QStringLiteral("24-dark-two-apps"));
    QObject *results = shooter.find(QStringLiteral("resultsView"));
    setProperty(results, "showingConfirmation", true);
    ok &= shooter.shoot(QStringLiteral("25-dark-confirmation"));
    setProperty(results, "showingConfirmation", false);
    settle(300);
    WindowFixture::setAppearance(QStringLiteral("light"));
    return ok;
}

// Put Back from the completion screen, the history of past uninstalls (light and dark) and the
// leftovers of deleted apps.
bool shootPutBackAndLeftovers(Shooter &shooter, WindowFixture &fixture)
{
    MainViewModel &viewModel = shooter.viewModel();
    PutBackPresenter &putBack = *fixture.putBackPresenter();
    const QString atlas = QStringLiteral("/Applications/Atlas Maps.app");
    fixture.addApp(atlas, QStringLiteral("com.example.atlas"), QStringLiteral("3.0"),
                   QStringLiteral("#2f9bd8"));
    fixture.addFile(QStringLiteral("~/Library/Caches/com.example.atlas/tiles.db"), 420000);
    fixture.addFile(QStringLiteral("~/Library/LaunchAgents/com.example.atlas.updater.plist"), 600);
    // Something else took the place of the preferences after the uninstall.
    const QString prefs = QStringLiteral("~/Library/Preferences/com.example.atlas.plist");
    fixture.addFile(prefs, 900);
    bool ok = shooter.drop({atlas});
    ok &= shooter.uninstall();
    fixture.addFile(prefs, 100);
    QObject *button = shooter.find(QStringLiteral("putBackButton"));
    ok &= button && QMetaObject::invokeMethod(button, "clicked");
    ok &= waitUntil([&] { return putBack.state() == PutBackPresenter::State::Restored; });
    ok &= shooter.shoot(QStringLiteral("26-put-back-summary"));

    QObject *sheet = shooter.find(QStringLiteral("putBackSheet"));
    if (sheet)
        QMetaObject::invokeMethod(sheet, "close");
    viewModel.clearSessions();
    settle(300);
    ok &= sheet && QMetaObject::invokeMethod(sheet, "openHistory");
    ok &= waitUntil([&] { return !putBack.isBusy(); });
    ok &= shooter.shoot(QStringLiteral("27-history"));
    WindowFixture::setAppearance(QStringLiteral("dark"));
    ok &= shooter.shoot(QStringLiteral("28-dark-history"));
    WindowFixture::setAppearance(QStringLiteral("light"));
    if (sheet)
        QMetaObject::invokeMethod(sheet, "close");
    settle(300);

    // Two apps deleted by hand: one left its container (selected), one only loose files.
    for (const auto &[path, size] :
         {std::pair{QStringLiteral("~/Library/Containers/com.example.gone-editor/Data/state"),
                    80000},
          {QStringLiteral("~/Library/Application Support/com.example.gone-editor/docs.db"), 250000},
          {QStringLiteral("~/Library/Caches/com.example.gone-editor/cache"), 64000},
          {QStringLiteral("~/Library/Caches/com.pixelworks.framer/thumbs"), 31000},
          {QStringLiteral("~/Library/Preferences/com.pixelworks.framer.plist"), 2000}})
        fixture.addFile(path, size);
    viewModel.findLeftovers();
    ok &= waitUntil([&] { return !viewModel.isFindingLeftovers(); });
    ok &= viewModel.sessionCount() > 0;
    ok &= shooter.shoot(QStringLiteral("29-leftover-groups"));
    return ok;
}
} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    // The pictures show the Mac's palette, whatever the machine that renders them uses.
    WindowFixture::setAppearance(QStringLiteral("light"));
    const QStringList arguments = QCoreApplication::arguments();
    const QString outDir = arguments.value(1, QStringLiteral("screenshots"));
    const QString description =
        arguments.value(2, QStringLiteral(QUENZO_SOURCE_DIR "/demo/fakemac.json"));
    QDir().mkpath(outDir);

    WindowFixture fixture;
    if (const auto wrong = fixture.applyDescription(description)) {
        qCritical("quenzo-screenshots: %s", qPrintable(*wrong));
        return 2;
    }
    // The description's icons are placeholders of one pixel; these look like apps.
    for (const auto &[macPath, color] : {std::pair{kWriter, "#5b6cff"},
                                         {kSheets, "#2fb86f"},
                                         {kChatter, "#1fa2ff"},
                                         {kTunnel, "#ff8a3d"},
                                         {kMixer, "#c058e8"},
                                         {kChess, "#8a8f98"}})
        fixture.paintIcon(macPath, QLatin1String(color));
    fixture.setProperty("fullDiskAccess", false);

    QQmlApplicationEngine engine;
    QuenzoUi::prepare(engine);
    engine.setInitialProperties(
        {{QStringLiteral("viewModel"), QVariant::fromValue(fixture.viewModel())}});
    engine.load(QUrl(QStringLiteral("qrc:/Quenzo/ContentView.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    Shooter shooter(engine, fixture, outDir);
    setProperty(shooter.find(QStringLiteral("mainView")), "putBack",
                QVariant::fromValue(fixture.putBackPresenter()));
    bool ok = shootDropZone(shooter, fixture);
    ok &= shootResults(shooter, fixture);
    ok &= shootConfirmations(shooter);
    ok &= shootUninstalls(shooter, fixture);
    ok &= shootMore(shooter, fixture);
    ok &= shootPutBackAndLeftovers(shooter, fixture);

    shooter.viewModel().clearSessions();
    shooter.viewModel().handleDroppedFiles({fixture.documentUrl()});
    ok &= shooter.shoot(QStringLiteral("16-notice"));
    return ok ? 0 : 1;
}
