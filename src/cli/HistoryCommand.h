// SPDX-License-Identifier: MIT
#pragma once

#include "CliOptions.h"
#include "Removal/HistoryStore.h"
#include "Removal/RestoreRun.h"
#include "Removal/UninstallRecord.h"

#include <QJsonObject>
#include <QTextStream>

// `quenzo-cli history` lists the uninstall records; `quenzo-cli restore` puts one back.
class HistoryCommand
{
public:
    HistoryCommand(const CliOptions &options, const SystemLayout &layout, QTextStream &out,
                   QTextStream &err);

    // history: 0. restore: 0 when every moved item is back, 1 otherwise, 2 no such record.
    [[nodiscard]] int run();

    [[nodiscard]] static QJsonObject recordJson(const UninstallRecord &record);
    [[nodiscard]] static QJsonObject restoreJson(const UninstallRecord &record,
                                                 const RestoreRun::Report &report);

private:
    [[nodiscard]] int history();
    [[nodiscard]] int restore();
    void writeReport(const RestoreRun::Report &report);

    CliOptions m_options;
    SystemLayout m_layout;
    HistoryStore m_history;
    QTextStream &m_out;
    QTextStream &m_err;
};
