// SPDX-License-Identifier: MIT
#include "SessionListModel.h"

#include "RoleNames.h"

SessionListModel::SessionListModel(QObject *parent) : QAbstractListModel(parent) {}

void SessionListModel::setSessions(const QList<QSharedPointer<UninstallSession>> &sessions)
{
    // Sessions only ever leave the list or join it at its end, so one pass of removals (in the
    // old order) followed by one insert at the end brings the rows to the new list.
    for (int row = int(m_sessions.size()) - 1; row >= 0; --row) {
        if (!sessions.contains(m_sessions.at(row))) {
            beginRemoveRows({}, row, row);
            m_sessions.removeAt(row);
            endRemoveRows();
        }
    }
    QList<QSharedPointer<UninstallSession>> added;
    for (const auto &session : sessions) {
        if (!m_sessions.contains(session))
            added.append(session);
    }
    if (!added.isEmpty()) {
        beginInsertRows({}, int(m_sessions.size()), int(m_sessions.size() + added.size()) - 1);
        m_sessions.append(added);
        endInsertRows();
    }
    if (m_sessions != sessions) { // an order no drop produces: start over
        beginResetModel();
        m_sessions = sessions;
        endResetModel();
    }
    observe();
}

void SessionListModel::observe()
{
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    for (const auto &session : std::as_const(m_sessions)) {
        UninstallSession *raw = session.get();
        const auto changed = [this, raw] {
            for (int row = 0; row < m_sessions.size(); ++row) {
                if (m_sessions.at(row).get() == raw)
                    emit dataChanged(index(row), index(row));
            }
        };
        m_connections << connect(raw, &UninstallSession::appInfoChanged, this, changed)
                      << connect(raw, &UninstallSession::statusChanged, this, changed);
    }
}

int SessionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_sessions.size());
}

QVariant SessionListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto &session = m_sessions.at(index.row());
    switch (Role(role)) {
    case Role::session:
        return QVariant::fromValue<QObject *>(session.get());
    case Role::displayName:
        return session->displayName();
    case Role::status:
        return QVariant::fromValue(session->statusKind());
    }
    return {};
}

QHash<int, QByteArray> SessionListModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
