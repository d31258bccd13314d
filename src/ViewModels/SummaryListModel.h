// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>

// The completion summary: one row per app with what it lost and what stayed. Rows follow the
// sessions in place, so a summary scrolled to its end stays there while the counters settle.
class SummaryListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Role { name = Qt::UserRole + 1, iconSource, removedText, failedText, isLast };
    Q_ENUM(Role)

    explicit SummaryListModel(QObject *parent = nullptr);

    void setSessions(const QList<UninstallSession *> &sessions);
    // Re-reads every row's counters.
    void refresh();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<QPointer<UninstallSession>> m_sessions;
};
