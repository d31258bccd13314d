// SPDX-License-Identifier: MIT
#include "RestoreReportModel.h"

#include "RoleNames.h"

RestoreReportModel::RestoreReportModel(QObject *parent) : QAbstractListModel(parent) {}

void RestoreReportModel::setReport(const RestoreRun::Report &report)
{
    beginResetModel();
    m_lines = report.items;
    // What needs the user's attention comes first.
    std::stable_sort(m_lines.begin(), m_lines.end(),
                     [](const auto &a, const auto &b) { return !a.isBack() && b.isBack(); });
    endResetModel();
}

int RestoreReportModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant RestoreReportModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RestoreRun::ItemReport &line = m_lines.at(index.row());
    switch (Role(role)) {
    case Role::path:
        return line.item.displayPath();
    case Role::outcomeText:
        return line.outcomeText();
    case Role::isBack:
        return line.isBack();
    case Role::accessibleName:
        return line.item.displayPath() + QStringLiteral(": ") + line.outcomeText();
    }
    return {};
}

QHash<int, QByteArray> RestoreReportModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
