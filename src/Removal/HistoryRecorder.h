// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"
#include "Removal/HistoryStore.h"
#include "Removal/UninstallRecorder.h"

#include <QHash>
#include <optional>

// Keeps the record of one uninstall in the history folder: the plan before the first move, a
// line after each move. A record that cannot be written never stops the uninstall.
class HistoryRecorder : public UninstallRecorder
{
public:
    explicit HistoryRecorder(SystemLayout layout) : m_layout(std::move(layout)) {}

    void planned(const QList<UninstallPlan> &plans) override;
    void moved(const QString &originalPath, const QString &trashPath,
               bool withAdminRights) override;

private:
    SystemLayout m_layout;
    std::optional<HistoryStore::Journal> m_journal;
    QHash<QString, qsizetype> m_indexes; // original path -> item of the record
};
