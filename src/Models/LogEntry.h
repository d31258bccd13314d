// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// One line of a session's activity log. Made only by UninstallSession::addLog.
struct LogEntry
{
    QUuid id;
    QDateTime timestamp;
    QString message;
    bool isSuccess = true;

    static LogEntry make(const QString &message, bool isSuccess)
    {
        return LogEntry{QUuid::createUuid(), QDateTime::currentDateTime(), message, isSuccess};
    }
};
