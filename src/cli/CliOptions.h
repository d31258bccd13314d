// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The parsed command line of quenzo-cli.
struct CliOptions
{
    enum class Command { scan, uninstall };

    Command command = Command::scan;
    QString root;
    QString home;
    bool json = false;
    bool verbose = false; // the quenzo.* logging categories on
    bool yes = false;
    QStringList apps;

    // Nothing, with a one-line message in `error`, when the arguments are wrong.
    [[nodiscard]] static std::optional<CliOptions> parse(const QStringList &arguments,
                                                         QString *error);
    [[nodiscard]] static QString usage();
};
