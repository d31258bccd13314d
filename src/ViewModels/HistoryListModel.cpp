// SPDX-License-Identifier: MIT
#include "HistoryListModel.h"

#include "RoleNames.h"

#include "Models/ByteCountFormatter.h"

#include <QLocale>

HistoryListModel::HistoryListModel(QObject *parent) : QAbstractListModel(parent) {}

void HistoryListModel::setRecords(const QList<UninstallRecord> &records)
{
    const auto sameJournals = [&] {
        if (records.size() != m_records.size())
            return false;
        for (qsizetype i = 0; i < records.size(); ++i) {
            if (records.at(i).fileName != m_records.at(i).fileName)
                return false;
        }
        return true;
    };
    if (sameJournals()) {
        m_records = records;
        if (!m_records.isEmpty())
            emit dataChanged(index(0), index(int(m_records.size()) - 1));
        return;
    }
    beginResetModel();
    m_records = records;
    endResetModel();
}

qsizetype HistoryListModel::movedCount(const UninstallRecord &record)
{
    return record.count(UninstallRecord::State::moved) +
           record.count(UninstallRecord::State::restored);
}

qint64 HistoryListModel::movedSize(const UninstallRecord &record)
{
    qint64 total = 0;
    for (const UninstallRecord::Item &item : record.items) {
        if (item.state != UninstallRecord::State::planned && qAddOverflow(total, item.size, &total))
            return std::numeric_limits<qint64>::max();
    }
    return total;
}

int HistoryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_records.size());
}

QVariant HistoryListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const UninstallRecord &record = m_records.at(index.row());
    const qsizetype moved = movedCount(record);
    const qsizetype back = record.count(UninstallRecord::State::restored);
    const QString date = QLocale().toString(record.time.toLocalTime(), QLocale::ShortFormat);
    const QString apps = record.apps().join(QStringLiteral(", "));
    QString detail = QStringLiteral("%1 %2, %3")
                         .arg(moved)
                         .arg(moved == 1 ? QStringLiteral("item") : QStringLiteral("items"))
                         .arg(formattedByteCount(movedSize(record)));
    if (back > 0)
        detail += back == moved ? QStringLiteral(" · all put back")
                                : QStringLiteral(" · %1 put back").arg(back);
    switch (Role(role)) {
    case Role::fileName:
        return record.fileName;
    case Role::dateText:
        return date;
    case Role::appsText:
        return apps;
    case Role::detailText:
        return detail;
    case Role::canPutBack:
        return record.count(UninstallRecord::State::moved) > 0;
    case Role::accessibleName:
        return QStringLiteral("%1, %2, %3").arg(apps, date, detail);
    }
    return {};
}

QHash<int, QByteArray> HistoryListModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
