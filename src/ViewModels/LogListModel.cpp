// SPDX-License-Identifier: MIT
#include "LogListModel.h"

#include <QSaveFile>
#include <QUrl>

#include <QLocale>
#include <QRegularExpression>

LogListModel::LogListModel(QObject *parent) : QAbstractListModel(parent) {}

void LogListModel::setSessions(const QList<UninstallSession *> &sessions)
{
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_sessions.clear();
    for (UninstallSession *session : sessions) {
        const int sessionIndex = int(m_sessions.size());
        m_sessions.append(session);
        m_connections << connect(session, &UninstallSession::logAdded, this,
                                 [this, sessionIndex] { insertEntry(sessionIndex); });
    }
    rebuild();
}

void LogListModel::rebuild()
{
    const bool wasEmpty = isEmpty();
    beginResetModel();
    m_rows.clear();
    m_entryCount = 0;
    for (int i = 0; i < m_sessions.size(); ++i) {
        if (!m_sessions.at(i))
            continue;
        if (showsAppNames())
            m_rows.append({i, -1});
        for (int entry = 0; entry < m_sessions.at(i)->logCount(); ++entry)
            m_rows.append({i, entry});
        m_entryCount += m_sessions.at(i)->logCount();
    }
    endResetModel();
    if (wasEmpty != isEmpty())
        emit isEmptyChanged();
}

void LogListModel::insertEntry(int sessionIndex)
{
    // The entry goes after the last row of its session's block.
    int position = 0;
    while (position < m_rows.size() && m_rows.at(position).session <= sessionIndex)
        ++position;
    const int entry = m_sessions.at(sessionIndex)->logCount() - 1;
    beginInsertRows({}, position, position);
    m_rows.insert(position, {sessionIndex, entry});
    endInsertRows();
    if (++m_entryCount == 1)
        emit isEmptyChanged();
}

int LogListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant LogListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    const UninstallSession *session = m_sessions.at(row.session);
    if (!session)
        return {};
    if (Role(role) == Role::isHeading)
        return row.entry < 0;
    if (row.entry < 0)
        return Role(role) == Role::message || Role(role) == Role::line
                   ? QVariant(session->displayName())
                   : QVariant();
    const LogEntry &entry = session->logs().at(row.entry);
    switch (Role(role)) {
    case Role::message:
        return entry.message;
    case Role::isSuccess:
        return entry.isSuccess;
    case Role::timeText:
        return timeText(entry.timestamp);
    case Role::symbol:
        return entry.isSuccess ? QStringLiteral("checkmark.circle.fill")
                               : QStringLiteral("xmark.circle.fill");
    case Role::line:
        return line(entry);
    default:
        return {};
    }
}

QHash<int, QByteArray> LogListModel::roleNames() const
{
    return {{int(Role::isHeading), "isHeading"}, {int(Role::message), "message"},
            {int(Role::isSuccess), "isSuccess"}, {int(Role::timeText), "timeText"},
            {int(Role::symbol), "symbol"},       {int(Role::line), "line"}};
}

QString LogListModel::line(const LogEntry &entry)
{
    // The result in words: the colour and the symbol reach neither a screen reader nor a paste.
    return timeText(entry.timestamp) +
           (entry.isSuccess ? QStringLiteral(" Succeeded: ") : QStringLiteral(" Failed: ")) +
           entry.message;
}

QString LogListModel::plainText() const
{
    QStringList lines;
    for (int row = 0; row < m_rows.size(); ++row)
        lines.append(data(index(row), int(Role::line)).toString());
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool LogListModel::saveText(const QUrl &file) const
{
    QSaveFile out(file.toLocalFile());
    if (!file.isLocalFile() || !out.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    out.write(plainText().toUtf8());
    return out.commit();
}

QString LogListModel::timeText(const QDateTime &timestamp)
{
    // Some locales' short format (the C locale's among them) carries seconds; drop them.
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    format.remove(QRegularExpression(QStringLiteral("[:.]?s+")));
    return QLocale().toString(timestamp.time(), format.trimmed());
}
