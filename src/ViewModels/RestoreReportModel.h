// SPDX-License-Identifier: MIT
#pragma once

#include "Removal/RestoreRun.h"

#include <QAbstractListModel>

// What one Put Back did, item by item: those that stayed behind first, each with why, then
// those that came back.
class RestoreReportModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Role { path = Qt::UserRole + 1, outcomeText, isBack, accessibleName };
    Q_ENUM(Role)

    explicit RestoreReportModel(QObject *parent = nullptr);

    void setReport(const RestoreRun::Report &report);
    // The words for an item's outcome; a failure carries its reason.
    // Whether the item is at its place after the run, by this run or an earlier one.

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<RestoreRun::ItemReport> m_lines;
};
