// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/OrphanGroup.h"

#include <QJsonObject>
#include <QList>
#include <QTextStream>

class SystemLayout;

// `quenzo-cli orphans`: what apps that are gone left behind, as text a newcomer can read or as
// JSON (docs/cli.md).
namespace OrphansCommand {

// The exit code: 0, also when nothing was found.
[[nodiscard]] int run(const SystemLayout &layout, bool json, QTextStream &out);

[[nodiscard]] QJsonObject json(const QList<OrphanGroup> &groups);
void writeText(QTextStream &out, const QList<OrphanGroup> &groups);

} // namespace OrphansCommand
