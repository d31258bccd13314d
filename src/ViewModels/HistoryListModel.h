// SPDX-License-Identifier: MIT
#pragma once

#include "Removal/UninstallRecord.h"

#include <QAbstractListModel>
#include <QList>

// The past uninstalls, newest first: when, which apps, how many items and how much they took,
// and whether anything of it is still in the Trash to put back.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Role {
        fileName = Qt::UserRole + 1,
        dateText,
        appsText,
        detailText,
        canPutBack,
        accessibleName,
    };
    Q_ENUM(Role)

    explicit HistoryListModel(QObject *parent = nullptr);

    // Rows that stay keep their delegates: a record put back only changes in place.
    void setRecords(const QList<UninstallRecord> &records);
    [[nodiscard]] const QList<UninstallRecord> &records() const { return m_records; }

    // Items the uninstall moved (put back or not) and their size.
    [[nodiscard]] static qsizetype movedCount(const UninstallRecord &record);
    [[nodiscard]] static qint64 movedSize(const UninstallRecord &record);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<UninstallRecord> m_records;
};
