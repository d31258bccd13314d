// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileCategory.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

// What one uninstall moved to the Trash, read back from its journal: a first line with every
// planned item, then one line per completed move or put-back item. Paths are kept as the bytes
// the file system uses, so a name that is not valid UTF-8 survives; the text beside them is
// for display only.
struct UninstallRecord
{
    enum class State { planned, moved, restored };

    struct Item
    {
        QByteArray path;      // the original path
        QByteArray trashPath; // empty until moved
        QString shownPath;    // the path as the user reads it; set by whoever knows the layout
        QString app;          // display name of the app it belonged to
        FileCategory category = FileCategory::other;
        qint64 size = 0;
        bool withAdminRights = false;
        std::optional<QString> packageID; // a receipt: forgotten, not moved
        State state = State::planned;

        // shownPath, or the path's bytes decoded when there is none.
        [[nodiscard]] QString displayPath() const;
    };

    QString fileName; // the journal's name in the history folder
    QDateTime time;
    QList<Item> items;

    [[nodiscard]] QStringList apps() const;
    [[nodiscard]] qsizetype count(State state) const;

    // Journal lines (JSON without a newline).
    [[nodiscard]] static QByteArray headerLine(const QDateTime &time, const QList<Item> &items);
    // `shownTrashPath`: the Trash path as the user reads it; its bytes decoded by default.
    [[nodiscard]] static QByteArray movedLine(qsizetype index, const QByteArray &trashPath,
                                              bool withAdminRights,
                                              const QString &shownTrashPath = {});
    [[nodiscard]] static QByteArray restoredLine(qsizetype index);

    // Nothing when the first line is not a record. A line cut short by an interrupted write, or
    // naming an item that does not exist, is ignored.
    [[nodiscard]] static std::optional<UninstallRecord> parse(const QByteArray &journal);
};
