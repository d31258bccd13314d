// SPDX-License-Identifier: MIT
#include "RestoreReportModel.h"

#include "RoleNames.h"

RestoreReportModel::RestoreReportModel(QObject *parent) : QAbstractListModel(parent) {}

void RestoreReportModel::setReport(const RestoreRun::Report &report)
{
    beginResetModel();
    m_lines = report.items;
    // What needs the user's attention comes first.
    std::stable_sort(m_lines.begin(), m_lines.end(), [](const auto &a, const auto &b) {
        return !isBack(a.outcome) && isBack(b.outcome);
    });
    endResetModel();
}

QString RestoreReportModel::outcomeText(const RestoreRun::ItemReport &line)
{
    using Outcome = RestoreRun::Outcome;
    switch (line.outcome) {
    case Outcome::restored:
        return QStringLiteral("Put back");
    case Outcome::alreadyRestored:
        return QStringLiteral("Already put back earlier");
    case Outcome::occupied:
        return QStringLiteral("Stayed in the Trash: something else is at its place now");
    case Outcome::missing:
        return QStringLiteral("No longer in the Trash");
    case Outcome::canceled:
        return QStringLiteral("Stayed in the Trash: administrator permission was not given");
    case Outcome::notMoved:
        return QStringLiteral("Never moved to the Trash");
    case Outcome::forgotten:
        return QStringLiteral("Installer receipt: comes back when the app is installed again");
    case Outcome::failed:
        break;
    }
    return line.message.isEmpty() ? QStringLiteral("Could not be put back")
                                  : QStringLiteral("Could not be put back: ") + line.message;
}

bool RestoreReportModel::isBack(RestoreRun::Outcome outcome)
{
    return outcome == RestoreRun::Outcome::restored ||
           outcome == RestoreRun::Outcome::alreadyRestored;
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
        return outcomeText(line);
    case Role::isBack:
        return isBack(line.outcome);
    case Role::accessibleName:
        return line.item.displayPath() + QStringLiteral(": ") + outcomeText(line);
    }
    return {};
}

QHash<int, QByteArray> RestoreReportModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
