// SPDX-License-Identifier: MIT
#include "SummaryListModel.h"

#include "RoleNames.h"

#include "Models/ByteCountFormatter.h"
#include "ResultsRules.h"

SummaryListModel::SummaryListModel(QObject *parent) : QAbstractListModel(parent) {}

void SummaryListModel::setSessions(const QList<UninstallSession *> &sessions)
{
    const int oldCount = int(m_sessions.size());
    const int newCount = int(sessions.size());
    if (newCount < oldCount) {
        beginRemoveRows({}, newCount, oldCount - 1);
        m_sessions.resize(newCount);
        endRemoveRows();
    }
    for (int i = 0; i < std::min(oldCount, newCount); ++i)
        m_sessions[i] = sessions.at(i);
    if (newCount > oldCount) {
        beginInsertRows({}, oldCount, newCount - 1);
        for (int i = oldCount; i < newCount; ++i)
            m_sessions.append(sessions.at(i));
        endInsertRows();
    }
    refresh();
}

void SummaryListModel::refresh()
{
    if (!m_sessions.isEmpty())
        emit dataChanged(index(0), index(int(m_sessions.size()) - 1));
}

int SummaryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_sessions.size());
}

QVariant SummaryListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const UninstallSession *session = m_sessions.at(index.row());
    if (!session)
        return {};
    switch (Role(role)) {
    case Role::name:
        return session->displayName();
    case Role::iconSource:
        return ResultsRules::iconSource(session->appInfo());
    case Role::removedText:
        return QString::number(session->removedCount()) + QStringLiteral(" files · ") +
               formattedByteCount(session->removedBytes());
    case Role::failedText:
        return session->failedCount() > 0 ? QString::number(session->failedCount()) +
                                                QStringLiteral(" couldn't be removed")
                                          : QString();
    case Role::isLast:
        return index.row() == m_sessions.size() - 1;
    }
    return {};
}

QHash<int, QByteArray> SummaryListModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
