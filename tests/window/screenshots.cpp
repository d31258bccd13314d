// SPDX-License-Identifier: MIT
// quenzo-screenshots OUTDIR: renders every state of the window on a fake Mac to PNG files.
#include "ViewModels/MainViewModel.h"
#include "Views/QuenzoUi.h"
#include "WindowFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
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

QVariantMap item(const QString &path, const QString &category, qint64 size,
                 const QVariantMap &extra = {})
{
    QVariantMap map = extra;
    map.insert(QStringLiteral("path"), path);
    map.insert(QStringLiteral("category"), category);
    map.insert(QStringLiteral("size"), size);
    return map;
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
        return m_window->findChild<QObject *>(objectName);
    }
    void drop(const QList<QUrl> &urls)
    {
        m_viewModel.clearSessions();
        // The previous results screen must be gone before the next one is looked up.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_viewModel.handleDroppedFiles(urls);
        for (int i = 0; i < 200 && m_viewModel.isScanning(); ++i)
            settle(10);
    }
    MainViewModel &viewModel() { return m_viewModel; }
    QQuickWindow *window() { return m_window; }

private:
    QQuickWindow *m_window;
    WindowFixture &m_fixture;
    MainViewModel &m_viewModel;
    QString m_outDir;
};

struct Apps
{
    QUrl writer, photon, notely, chirp, tally, chess;
};

Apps layOut(WindowFixture &fixture)
{
    Apps apps;
    apps.writer = fixture.addApp(QStringLiteral("/Applications/Writer.app"),
                                 QStringLiteral("com.example.Writer"), QStringLiteral("4.2.1"),
                                 QStringLiteral("#5b6cff"));
    const QVariantMap note{{QStringLiteral("note"), QStringLiteral("Shared with Writer Helper")}};
    const QVariantMap low{{QStringLiteral("confidence"), 0.7}};
    fixture.setItems(
        QStringLiteral("com.example.Writer"),
        {item(QStringLiteral("/Applications/Writer.app"), QStringLiteral("application"), 184320000),
         item(QStringLiteral("~/Library/Application Support/Writer"),
              QStringLiteral("applicationSupport"), 52428800),
         item(QStringLiteral("~/Library/Containers/com.example.Writer"),
              QStringLiteral("containers"), 7340032),
         item(QStringLiteral("~/Library/Preferences/com.example.Writer.plist"),
              QStringLiteral("preferences"), 4096),
         item(QStringLiteral("~/Library/Caches/com.example.Writer"), QStringLiteral("caches"),
              23068672),
         item(QStringLiteral("~/Library/WebKit/com.example.Writer"), QStringLiteral("webData"),
              1048576, low),
         item(QStringLiteral("~/Library/Saved Application State/com.example.Writer.savedState"),
              QStringLiteral("savedState"), 61440),
         item(QStringLiteral("~/Library/Logs/Writer"), QStringLiteral("logs"), 327680, note)});
    const QStringList names{QStringLiteral("Photon"), QStringLiteral("Notely"),
                            QStringLiteral("Chirp"), QStringLiteral("Tally")};
    const QStringList colors{QStringLiteral("#ff8a3d"), QStringLiteral("#2fb86f"),
                             QStringLiteral("#1fa2ff"), QStringLiteral("#c058e8")};
    QList<QUrl *> targets{&apps.photon, &apps.notely, &apps.chirp, &apps.tally};
    for (int i = 0; i < names.size(); ++i) {
        const QString identifier = QStringLiteral("com.example.") + names.at(i);
        *targets[i] =
            fixture.addApp(QStringLiteral("/Applications/") + names.at(i) + QStringLiteral(".app"),
                           identifier, QStringLiteral("1.0"), colors.at(i));
        fixture.setItems(
            identifier,
            {item(QStringLiteral("/Applications/") + names.at(i) + QStringLiteral(".app"),
                  QStringLiteral("application"), 20000000 * (i + 1)),
             item(QStringLiteral("~/Library/Caches/") + identifier, QStringLiteral("caches"),
                  3000000 * (i + 2)),
             item(QStringLiteral("~/Library/Preferences/") + identifier + QStringLiteral(".plist"),
                  QStringLiteral("preferences"), 2048)});
    }
    fixture.setItems(
        QStringLiteral("com.example.Photon"),
        {item(QStringLiteral("/Applications/Photon.app"), QStringLiteral("application"), 96000000),
         item(QStringLiteral("/Library/LaunchDaemons/com.example.Photon.helper.plist"),
              QStringLiteral("launchDaemons"), 1024),
         item(QStringLiteral("/Library/PrivilegedHelperTools/com.example.Photon.helper"),
              QStringLiteral("helperTools"), 2400000)});
    apps.chess = fixture.addApp(QStringLiteral("/System/Applications/Chess.app"),
                                QStringLiteral("com.apple.Chess"), QStringLiteral("3.18"),
                                QStringLiteral("#8a8f98"));
    fixture.setItems(QStringLiteral("com.apple.Chess"),
                     {item(QStringLiteral("/System/Applications/Chess.app"),
                           QStringLiteral("application"), 8200000)});
    fixture.setFailures(QStringLiteral("com.example.Notely"), 2);
    return apps;
}

bool setProperty(QObject *object, const char *name, const QVariant &value)
{
    const bool set = object && object->setProperty(name, value);
    if (!set)
        qWarning("could not set %s", name);
    return set;
}

void forceStatus(MainViewModel &viewModel, const UninstallStatus &status)
{
    for (const auto &session : viewModel.sessions())
        session->setStatus(status);
}
} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString outDir = arguments.size() > 1 ? arguments.at(1) : QStringLiteral("screenshots");
    QDir().mkpath(outDir);

    WindowFixture fixture;
    fixture.setProperty("fullDiskAccess", false);
    const Apps apps = layOut(fixture);

    QQmlApplicationEngine engine;
    QuenzoUi::prepare(engine);
    engine.setInitialProperties(
        {{QStringLiteral("viewModel"), QVariant::fromValue(fixture.viewModel())}});
    engine.load(QUrl(QStringLiteral("qrc:/Quenzo/ContentView.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    Shooter shooter(engine, fixture, outDir);
    MainViewModel &viewModel = shooter.viewModel();
    bool ok = shooter.shoot(QStringLiteral("01-drop-zone-without-full-disk-access"));

    fixture.setProperty("fullDiskAccess", true);
    viewModel.refreshFullDiskAccess();
    ok &= shooter.shoot(QStringLiteral("02-drop-zone"));
    QObject *mainView = shooter.find(QStringLiteral("mainView"));
    setProperty(mainView, "isTargeted", true);
    ok &= shooter.shoot(QStringLiteral("03-drop-hover"));
    setProperty(mainView, "isTargeted", false);

    fixture.setProperty("fullDiskAccess", false);
    viewModel.refreshFullDiskAccess();
    shooter.drop({apps.writer});
    forceStatus(viewModel, UninstallStatus::scanning());
    ok &= shooter.shoot(QStringLiteral("04-scanning"));
    forceStatus(viewModel, UninstallStatus::ready());
    ok &= shooter.shoot(QStringLiteral("05-one-app-by-category"));
    setProperty(mainView, "isTargeted", true);
    ok &= shooter.shoot(QStringLiteral("06-drop-overlay"));
    setProperty(mainView, "isTargeted", false);

    fixture.setProperty("fullDiskAccess", true);
    viewModel.refreshFullDiskAccess();
    shooter.drop({apps.writer, apps.photon, apps.notely, apps.chirp, apps.tally});
    viewModel.sessions().at(4)->setStatus(UninstallStatus::scanning());
    ok &= shooter.shoot(QStringLiteral("07-five-apps"));
    viewModel.sessions().at(4)->setStatus(UninstallStatus::ready());

    shooter.drop({apps.chess});
    ok &= shooter.shoot(QStringLiteral("08-system-app"));

    shooter.drop({apps.writer, apps.notely});
    QObject *results = shooter.find(QStringLiteral("resultsView"));
    setProperty(results, "showingConfirmation", true);
    ok &= shooter.shoot(QStringLiteral("09-confirmation"));
    setProperty(results, "showingConfirmation", false);
    settle(300);

    shooter.drop({apps.photon});
    results = shooter.find(QStringLiteral("resultsView"));
    ok &= shooter.shoot(QStringLiteral("10-admin-items"));
    setProperty(results, "showingConfirmation", true);
    ok &= shooter.shoot(QStringLiteral("11-confirmation-administrator"));
    setProperty(results, "showingConfirmation", false);
    settle(300);

    shooter.drop({apps.writer, apps.chirp, apps.tally});
    viewModel.uninstall();
    ok &= shooter.shoot(QStringLiteral("12-uninstalling"));
    fixture.finishUninstall();
    ok &= shooter.shoot(QStringLiteral("13-completed"));
    results = shooter.find(QStringLiteral("resultsView"));
    setProperty(results, "showingLogs", true);
    ok &= shooter.shoot(QStringLiteral("14-log-sheet"));
    setProperty(results, "showingLogs", false);
    settle(300);

    shooter.drop({apps.writer, apps.notely, apps.chirp});
    viewModel.uninstall();
    fixture.finishUninstall();
    ok &= shooter.shoot(QStringLiteral("15-completed-with-errors"));

    viewModel.clearSessions();
    viewModel.handleDroppedFiles({fixture.documentUrl()});
    ok &= shooter.shoot(QStringLiteral("16-notice"));
    return ok ? 0 : 1;
}
