// SPDX-License-Identifier: MIT
// quenzo-cli: scan or uninstall apps from a terminal, over the same controller as the window.
#include "CliOptions.h"
#include "CliRunner.h"
#include "Platform/SystemLayout.h"

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
    QString error;
    const auto options = CliOptions::parse(QCoreApplication::arguments(), &error);
    if (!options) {
        QTextStream(stderr) << "quenzo-cli: " << error << " (see quenzo-cli --help)\n";
        return 2;
    }
    if (!options->root.isEmpty() || !options->home.isEmpty())
        SystemLayout::set(options->root.isEmpty() ? QStringLiteral("/") : options->root,
                          options->home);
    return CliRunner(*options).run();
}
