// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"

#include <QAbstractListModel>
#include <QList>
#include <QUrl>

// The apps of the Mac's /Applications (and its subfolders one level down, such as Utilities)
// for the "Add App…" dialog, each with a tick; listed on the thread pool, so a slow or hostile
// folder never stalls the window.
class AppPickerModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int checkedCount READ checkedCount NOTIFY checkedCountChanged)

public:
    enum class Role { name = Qt::UserRole + 1, folder, isChecked };
    Q_ENUM(Role)

    explicit AppPickerModel(SystemLayout layout, QObject *parent = nullptr);

    // Lists the folder anew, with nothing ticked.
    Q_INVOKABLE void reload();
    Q_INVOKABLE void toggle(int row);
    // The ticked apps, in list order.
    [[nodiscard]] Q_INVOKABLE QList<QUrl> checkedUrls() const;
    [[nodiscard]] int checkedCount() const;

    // The bundles in `folder` and one level below it, sorted by name; never follows a link.
    [[nodiscard]] static QStringList listApps(const QString &folder);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void checkedCountChanged();

private:
    SystemLayout m_layout;
    struct Entry
    {
        QString path;
        bool isChecked = false;
    };
    QList<Entry> m_entries;
    int m_generation = 0;
};
