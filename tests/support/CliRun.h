// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// One run of the built quenzo-cli, without a terminal on its input.
struct CliRun
{
    int exitCode = -1; // -1 when it did not finish
    QString out;
    QString err;

    [[nodiscard]] static CliRun of(const QStringList &arguments);
    // `command` on a fake Mac: "COMMAND --root ROOT --home HOME OPTIONS... APP".
    [[nodiscard]] static CliRun on(const QString &command, const QString &root, const QString &home,
                                   const QStringList &options, const QString &app);
    // stdout as one JSON object (empty when it is not one).
    [[nodiscard]] QJsonObject json() const;
};
