// SPDX-License-Identifier: MIT
#include "CliOptions.h"

#include "Platform/LayoutOptions.h"

#include <QFileInfo>
#include <QMap>

namespace {
Result<QString> folderArgument(const QStringList &arguments, qsizetype &index)
{
    const QString option = arguments.at(index);
    if (index + 1 >= arguments.size())
        return Failure(option + QStringLiteral(" needs a folder"));
    const QString value = arguments.at(++index);
    if (const auto refused = LayoutOptions::folderError(option, value))
        return Failure(*refused);
    return QFileInfo(value).absoluteFilePath();
}
} // namespace

Result<CliOptions> CliOptions::parse(const QStringList &arguments)
{
    CliOptions options;
    if (arguments.size() < 2)
        return Failure(
            QStringLiteral("missing command (scan, uninstall, orphans, history or restore)"));
    static const QMap<QString, Command> kCommands{{QStringLiteral("scan"), Command::scan},
                                                  {QStringLiteral("uninstall"), Command::uninstall},
                                                  {QStringLiteral("orphans"), Command::orphans},
                                                  {QStringLiteral("history"), Command::history},
                                                  {QStringLiteral("restore"), Command::restore}};
    const QString command = arguments.at(1);
    if (!kCommands.contains(command))
        return Failure(QStringLiteral("unknown command: ") + command);
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
            const auto folder = folderArgument(arguments, i);
            if (!folder)
                return Failure(folder.error());
            (argument == QLatin1String("--root") ? options.root : options.home) = *folder;
        } else {
            return Failure(QStringLiteral("unknown option: ") + argument);
        }
    }
    if (const auto wrong = checkOperands(options))
        return Failure(*wrong);
    return options;
}

std::optional<QString> CliOptions::checkOperands(CliOptions &options)
{
    switch (options.command) {
    case Command::scan:
    case Command::uninstall:
        if (options.apps.isEmpty())
            return QStringLiteral("no app given");
        break;
    case Command::orphans:
    case Command::history:
        if (!options.apps.isEmpty())
            return QStringLiteral("unexpected argument: ") + options.apps.first();
        break;
    case Command::restore:
        if (options.last == (options.apps.size() == 1) || options.apps.size() > 1)
            return QStringLiteral("restore needs --last or one record");
        options.record = options.apps.value(0);
        options.apps.clear();
        break;
    }
    return std::nullopt;
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
