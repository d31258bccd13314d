// SPDX-License-Identifier: MIT
#pragma once

#include "Core/Result.h"

#include <QString>
#include <QStringList>
#include <optional>

// The parsed command line of quenzo-cli.
struct CliOptions
{
    enum class Command { scan, uninstall, orphans, history, restore };

    Command command = Command::scan;
    QString root;
    QString home;
    bool json = false;
    bool verbose = false; // the quenzo.* logging categories on
    bool yes = false;
    QStringList apps;
    bool last = false; // restore: the newest record
    QString record;    // restore: a record file or its name

    // A one-line message instead when the arguments are wrong.
    [[nodiscard]] static Result<CliOptions> parse(const QStringList &arguments);
    [[nodiscard]] static QString usage();

private:
    // Apps for scan and uninstall, none for orphans and history, one record for restore.
    // What is wrong with them, if anything.
    [[nodiscard]] static std::optional<QString> checkOperands(CliOptions &options);
};
