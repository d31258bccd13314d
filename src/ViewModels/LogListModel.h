// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>

// The activity log of a batch as one list: for each session (in order) a heading with the app's
// name when there are several sessions, then its entries, oldest first. New entries are
// inserted at the end of their session's block while the log is shown.
class LogListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)

public:
    enum class Role { isHeading = Qt::UserRole + 1, message, isSuccess, timeText, symbol, line };
    Q_ENUM(Role)

    explicit LogListModel(QObject *parent = nullptr);

    void setSessions(const QList<UninstallSession *> &sessions);
    // No session has an entry (or there are no sessions).
    [[nodiscard]] bool isEmpty() const { return m_entryCount == 0; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    // Every row as one line of text ("10:42 Failed: ..."), headings included: what Copy and
    // Save write.
    [[nodiscard]] Q_INVOKABLE QString plainText() const;
    // Writes plainText() to a local file; false when it could not be written.
    Q_INVOKABLE bool saveText(const QUrl &file) const;
    // An entry as one line with its time and its result in words.
    [[nodiscard]] static QString line(const LogEntry &entry);
    // A timestamp as the locale writes hours and minutes.
    [[nodiscard]] static QString timeText(const QDateTime &timestamp);

signals:
    void isEmptyChanged();

private:
    struct Row
    {
        int session;
        int entry; // -1 for the heading
    };

    void rebuild();
    void insertEntry(int sessionIndex);
    [[nodiscard]] bool showsAppNames() const { return m_sessions.size() > 1; }

    QList<QPointer<UninstallSession>> m_sessions;
    QList<Row> m_rows;
    QList<QMetaObject::Connection> m_connections;
    int m_entryCount = 0;
};
