// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"
#include "Removal/UninstallRecord.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

// The uninstall records: one append-only journal per uninstall in the user's application data
// folder (~/Library/Application Support/Quenzo/history on a Mac and on a fake one, the
// platform's data folder elsewhere). Names start with the time, so name order is time order.
class HistoryStore
{
public:
    explicit HistoryStore(const SystemLayout &layout);

    [[nodiscard]] const QString &folder() const { return m_folder; }
    // Journal names, oldest first.
    [[nodiscard]] QStringList names() const;
    // A journal by its name in the folder or by its path; nothing when it is not a record. Its
    // items' paths are shown as the layout shows them.
    [[nodiscard]] std::optional<UninstallRecord> load(const QString &nameOrPath) const;
    [[nodiscard]] std::optional<UninstallRecord> latest() const;

    // Appends whole lines to one journal; each line is one write, so a killed process leaves at
    // most its last line cut short.
    class Journal
    {
    public:
        bool append(const QByteArray &line) const;
        [[nodiscard]] const QString &path() const { return m_path; }

    private:
        friend class HistoryStore;
        explicit Journal(QString path) : m_path(std::move(path)) {}
        QString m_path;
    };
    // A new journal named after `time`, or nothing when it cannot be made.
    [[nodiscard]] std::optional<Journal> createJournal(const QDateTime &time) const;
    // An existing journal of the folder, to record put-back items.
    [[nodiscard]] std::optional<Journal> openJournal(const QString &fileName) const;

private:
    SystemLayout m_layout;
    QString m_folder;
};
