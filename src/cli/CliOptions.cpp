// SPDX-License-Identifier: MIT
#include "CliOptions.h"

#include "Platform/LayoutOptions.h"

#include <QFileInfo>

namespace {
std::optional<QString> folderArgument(const QStringList &arguments, qsizetype &index,
                                      QString *error)
{
    const QString option = arguments.at(index);
    if (index + 1 >= arguments.size()) {
        *error = option + QStringLiteral(" needs a folder");
        return std::nullopt;
    }
    const QString value = arguments.at(++index);
    if (const auto refused = LayoutOptions::folderError(option, value)) {
        *error = *refused;
        return std::nullopt;
    }
    return QFileInfo(value).absoluteFilePath();
}
} // namespace

std::optional<CliOptions> CliOptions::parse(const QStringList &arguments, QString *error)
{
    CliOptions options;
    if (arguments.size() < 2) {
        *error = QStringLiteral("missing command (scan or uninstall)");
        return std::nullopt;
    }
    const QString command = arguments.at(1);
    if (command == QLatin1String("scan")) {
        options.command = Command::scan;
    } else if (command == QLatin1String("uninstall")) {
        options.command = Command::uninstall;
    } else {
        *error = QStringLiteral("unknown command: ") + command;
        return std::nullopt;
    }
    bool onlyApps = false;
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        const QString argument = arguments.at(i);
        if (onlyApps || !argument.startsWith(QLatin1Char('-')) || argument == QLatin1String("-")) {
            options.apps.append(argument);
        } else if (argument == QLatin1String("--")) {
            onlyApps = true;
        } else if (argument == QLatin1String("--json")) {
            options.json = true;
        } else if (argument == QLatin1String("--verbose")) {
            options.verbose = true;
        } else if (argument == QLatin1String("--yes") && options.command == Command::uninstall) {
            options.yes = true;
        } else if (argument == QLatin1String("--root") || argument == QLatin1String("--home")) {
            const auto folder = folderArgument(arguments, i, error);
            if (!folder)
                return std::nullopt;
            (argument == QLatin1String("--root") ? options.root : options.home) = *folder;
        } else {
            *error = QStringLiteral("unknown option: ") + argument;
            return std::nullopt;
        }
    }
    if (options.apps.isEmpty()) {
        *error = QStringLiteral("no app given");
        return std::nullopt;
    }
    return options;
}

QString CliOptions::usage()
{
    return QStringLiteral(
        "usage: quenzo-cli scan [--root DIR] [--home DIR] [--json] [--verbose] APP...\n"
        "       quenzo-cli uninstall [--root DIR] [--home DIR] [--json] [--verbose] [--yes] "
        "APP...\n"
        "--verbose writes why files were left out or failed (quenzo.* logging) to stderr.\n");
}
