// SPDX-License-Identifier: MIT
// quenzo: the window. `quenzo [--root DIR] [--home DIR] [APP...]`; apps given here are handled as
// one drop at start, as a Mac app handles files opened with it.
#include "Platform/LayoutOptions.h"
#include "ViewModels/MainViewModel.h"
#include "Views/IconShape.h"
#include "Views/QuenzoUi.h"

#include <QClipboard>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTextStream>
#include <QUrl>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(QuenzoPlugin)

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Quenzo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption rootOption(QStringLiteral("root"),
                                        QStringLiteral("Folder that stands for the Mac's \"/\"."),
                                        QStringLiteral("DIR"));
    const QCommandLineOption homeOption(
        QStringLiteral("home"), QStringLiteral("The user's home folder."), QStringLiteral("DIR"));
    parser.addOption(rootOption);
    parser.addOption(homeOption);
    parser.addPositionalArgument(QStringLiteral("app"), QStringLiteral("Apps to scan at start."),
                                 QStringLiteral("[APP...]"));
    parser.process(app);
    for (const QCommandLineOption *option : {&rootOption, &homeOption}) {
        const QString name = QStringLiteral("--") + option->names().constFirst();
        const auto refused = LayoutOptions::folderError(name, parser.value(*option));
        if (parser.isSet(*option) && refused) {
            QTextStream(stderr) << "quenzo: " << *refused << '\n';
            return 2;
        }
    }
    const SystemLayout layout =
        LayoutOptions::layout(parser.value(rootOption), parser.value(homeOption));

    MainViewModel::Dependencies dependencies;
    dependencies.openUrl = [](const QUrl &url) { QDesktopServices::openUrl(url); };
    dependencies.shapeIcon = IconShape::rounded;
    dependencies.copyText = [](const QString &text) {
        QGuiApplication::clipboard()->setText(text);
    };
    MainViewModel viewModel(layout, dependencies);
    QQmlApplicationEngine engine;
    QuenzoUi::prepare(engine);
    engine.setInitialProperties({{QStringLiteral("viewModel"), QVariant::fromValue(&viewModel)}});
    engine.load(QUrl(QStringLiteral("qrc:/Quenzo/ContentView.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;

    QList<QUrl> apps;
    for (const QString &path : parser.positionalArguments())
        apps.append(QUrl::fromLocalFile(QDir::current().absoluteFilePath(path)));
    if (!apps.isEmpty())
        viewModel.handleDroppedFiles(apps);
    const int status = QGuiApplication::exec();
    // The window may close while an uninstall runs. Its task moves items through this thread,
    // so keep serving it until the run has finished instead of leaving it half done.
    while (viewModel.isProcessing())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return status;
}
