// SPDX-License-Identifier: MIT
#include "CliOptions.h"

#include "Platform/LayoutOptions.h"

#include <QFileInfo>
#include <QMap>

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
        *error = QStringLiteral("missing command (scan, uninstall, orphans, history or restore)");
        return std::nullopt;
    }
    static const QMap<QString, Command> kCommands{{QStringLiteral("scan"), Command::scan},
                                                  {QStringLiteral("uninstall"), Command::uninstall},
                                                  {QStringLiteral("orphans"), Command::orphans},
                                                  {QStringLiteral("history"), Command::history},
                                                  {QStringLiteral("restore"), Command::restore}};
    const QString command = arguments.at(1);
    if (!kCommands.contains(command)) {
        *error = QStringLiteral("unknown command: ") + command;
        return std::nullopt;
    }
    options.command = kCommands.value(command);
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
        } else if (argument == QLatin1String("--last") && options.command == Command::restore) {
            options.last = true;
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
    return checkOperands(options, error) ? std::optional(options) : std::nullopt;
}

bool CliOptions::checkOperands(CliOptions &options, QString *error)
{
    error->clear();
    switch (options.command) {
    case Command::scan:
    case Command::uninstall:
        if (options.apps.isEmpty())
            *error = QStringLiteral("no app given");
        break;
    case Command::orphans:
    case Command::history:
        if (!options.apps.isEmpty())
            *error = QStringLiteral("unexpected argument: ") + options.apps.first();
        break;
    case Command::restore:
        if (options.last != (options.apps.size() == 1) && options.apps.size() <= 1)
            options.record = options.apps.value(0);
        else
            *error = QStringLiteral("restore needs --last or one record");
        options.apps.clear();
        break;
    }
    return error->isEmpty();
}

QString CliOptions::usage()
{
    return QStringLiteral(
        "usage: quenzo-cli scan [--root DIR] [--home DIR] [--json] [--verbose] APP...\n"
        "       quenzo-cli uninstall [--root DIR] [--home DIR] [--json] [--verbose] [--yes] "
        "APP...\n"
        "       quenzo-cli orphans [--root DIR] [--home DIR] [--json] [--verbose]\n"
        "       quenzo-cli history [--root DIR] [--home DIR] [--json]\n"
        "       quenzo-cli restore [--root DIR] [--home DIR] [--json] [--verbose] (--last | "
        "RECORD)\n"
        "--verbose writes why files were left out or failed (quenzo.* logging) to stderr.\n");
}
