// SPDX-License-Identifier: MIT
#include "AppPickerModel.h"

#include "RoleNames.h"

#include <QCollator>
#include <QDirIterator>
#include <QFileInfo>
#include <QtConcurrent>

AppPickerModel::AppPickerModel(SystemLayout layout, QObject *parent)
    : QAbstractListModel(parent), m_layout(std::move(layout))
{}

QStringList AppPickerModel::listApps(const QString &folder)
{
    QStringList apps;
    QStringList subfolders;
    QDirIterator it(folder, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    while (it.hasNext()) {
        const QString path = it.next();
        (path.endsWith(QLatin1String(".app")) ? apps : subfolders).append(path);
    }
    for (const QString &subfolder : std::as_const(subfolders)) {
        QDirIterator inner(subfolder, {QStringLiteral("*.app")},
                           QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
        while (inner.hasNext())
            apps.append(inner.next());
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(apps.begin(), apps.end(), [&collator](const QString &a, const QString &b) {
        return collator.compare(QFileInfo(a).fileName(), QFileInfo(b).fileName()) < 0;
    });
    return apps;
}

void AppPickerModel::reload()
{
    const int generation = ++m_generation;
    const QString folder = m_layout.path(QStringLiteral("/Applications"));
    QtConcurrent::run([folder] {
        return listApps(folder);
    }).then(this, [this, generation](const QStringList &apps) {
        if (generation != m_generation)
            return; // a newer listing is on its way
        beginResetModel();
        m_entries.clear();
        for (const QString &path : apps)
            m_entries.append({path});
        endResetModel();
        emit checkedCountChanged();
    });
}

void AppPickerModel::toggle(int row)
{
    if (row < 0 || row >= m_entries.size())
        return;
    m_entries[row].isChecked = !m_entries.at(row).isChecked;
    emit dataChanged(index(row), index(row), {int(Role::isChecked)});
    emit checkedCountChanged();
}

QList<QUrl> AppPickerModel::checkedUrls() const
{
    QList<QUrl> urls;
    for (const Entry &entry : m_entries) {
        if (entry.isChecked)
            urls.append(QUrl::fromLocalFile(entry.path));
    }
    return urls;
}

int AppPickerModel::checkedCount() const
{
    return int(std::count_if(m_entries.cbegin(), m_entries.cend(),
                             [](const Entry &entry) { return entry.isChecked; }));
}

int AppPickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant AppPickerModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Entry &entry = m_entries.at(index.row());
    switch (Role(role)) {
    case Role::name:
        return QFileInfo(entry.path).completeBaseName();
    case Role::folder:
        return m_layout.displayPath(QFileInfo(entry.path).path());
    case Role::isChecked:
        return entry.isChecked;
    }
    return {};
}

QHash<int, QByteArray> AppPickerModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}
