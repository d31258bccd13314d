// SPDX-License-Identifier: MIT
// quenzo-cli: scan or uninstall apps from a terminal, over the same controller as the window.
#include "CliOptions.h"
#include "CliRunner.h"
#include "Platform/LayoutOptions.h"
#include "Platform/LogCategories.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quenzo-cli"));

    if (QCoreApplication::arguments().contains(QStringLiteral("--help"))) {
        QTextStream(stdout) << CliOptions::usage();
        return 0;
    }
    const auto options = CliOptions::parse(QCoreApplication::arguments());
    if (!options) {
        QTextStream(stderr) << "quenzo-cli: " << options.error() << " (see quenzo-cli --help)\n";
        return 2;
    }
    if (options->verbose)
        LogCategories::enableVerbose();
    return CliRunner(*options, LayoutOptions::layout(options->root, options->home)).run();
}
