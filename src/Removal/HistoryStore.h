// SPDX-License-Identifier: MIT
#pragma once

#include "Removal/UninstallRecord.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

// The uninstall records: one append-only journal per uninstall in the user's application data
// folder (~/Library/Application Support/Quenzo/history on a Mac and on a fake one, the
// platform's data folder elsewhere). Names start with the time, so name order is time order.
namespace HistoryStore {

[[nodiscard]] QString folder();
// Journal names, oldest first.
[[nodiscard]] QStringList names();
// A journal by its name in the folder or by its path; nothing when it is not a record.
[[nodiscard]] std::optional<UninstallRecord> load(const QString &nameOrPath);
[[nodiscard]] std::optional<UninstallRecord> latest();

// Appends whole lines to one journal; each line is one write, so a killed process leaves at
// most its last line cut short.
class Journal
{
public:
    // A new journal named after `time`, or nothing when it cannot be made.
    [[nodiscard]] static std::optional<Journal> create(const QDateTime &time);
    // An existing journal of the folder, to record put-back items.
    [[nodiscard]] static std::optional<Journal> open(const QString &fileName);

    bool append(const QByteArray &line) const;
    [[nodiscard]] const QString &path() const { return m_path; }

private:
    explicit Journal(QString path) : m_path(std::move(path)) {}
    QString m_path;
};

} // namespace HistoryStore
