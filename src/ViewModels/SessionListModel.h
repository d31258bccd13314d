// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QAbstractListModel>
#include <QList>
#include <QSharedPointer>

// The controller's sessions as a list the views watch: a removed app removes its row, a dropped
// app inserts one, and the others stay as they are.
class SessionListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Role { session = Qt::UserRole + 1, displayName, status };
    Q_ENUM(Role)

    explicit SessionListModel(QObject *parent = nullptr);

    void setSessions(const QList<QSharedPointer<UninstallSession>> &sessions);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void observe();

    QList<QSharedPointer<UninstallSession>> m_sessions;
    QList<QMetaObject::Connection> m_connections;
};
