// SPDX-License-Identifier: MIT
#include "UninstallSession.h"

#include <limits>

UninstallSession::UninstallSession(const AppInfo &appInfo, QObject *parent)
    : QObject(parent), m_appInfo(appInfo)
{}

void UninstallSession::setAppInfo(const AppInfo &appInfo)
{
    emit willChange();
    m_appInfo = appInfo;
    emit appInfoChanged();
}

void UninstallSession::setDiscoveredFiles(const QList<FileItem> &files)
{
    emit willChange();
    m_discoveredFiles = files;
    emit discoveredFilesChanged();
    emit selectionChanged();
}

void UninstallSession::setStatus(const UninstallStatus &status)
{
    emit willChange();
    m_status = status;
    emit statusChanged();
}

void UninstallSession::addLog(const QString &message, bool isSuccess)
{
    emit willChange();
    m_logs.append(LogEntry::make(message, isSuccess));
    emit logsChanged();
    emit logAdded(m_logs.constLast());
}

void UninstallSession::setRemovedCount(int count)
{
    emit willChange();
    m_removedCount = count;
    emit countersChanged();
}

void UninstallSession::setFailedCount(int count)
{
    emit willChange();
    m_failedCount = count;
    emit countersChanged();
}

void UninstallSession::setRemovedBytes(qint64 bytes)
{
    emit willChange();
    m_removedBytes = bytes;
    emit countersChanged();
}

qint64 UninstallSession::totalSize() const
{
    qint64 total = 0;
    for (const FileItem &item : m_discoveredFiles) {
        if (!item.isSelected)
            continue;
        // Saturate rather than wrap: a nonsensical sum must never turn into a small one.
        if (qAddOverflow(total, item.size, &total))
            return item.size > 0 ? std::numeric_limits<qint64>::max()
                                 : std::numeric_limits<qint64>::min();
    }
    return total;
}

int UninstallSession::selectedFilesCount() const
{
    return int(std::count_if(m_discoveredFiles.cbegin(), m_discoveredFiles.cend(),
                             [](const FileItem &item) { return item.isSelected; }));
}

QHash<FileCategory, QList<FileItem>> UninstallSession::filesByCategory() const
{
    QHash<FileCategory, QList<FileItem>> groups;
    for (const FileItem &item : m_discoveredFiles)
        groups[item.category].append(item);
    return groups;
}

void UninstallSession::toggleFileSelection(const FileItem &file)
{
    const auto it = std::find(m_discoveredFiles.cbegin(), m_discoveredFiles.cend(), file);
    if (it != m_discoveredFiles.cend())
        toggleFileSelectionAt(int(it - m_discoveredFiles.cbegin()));
}

void UninstallSession::toggleFileSelectionAt(int index)
{
    if (index < 0 || index >= m_discoveredFiles.size())
        return;
    setSelected(index, !m_discoveredFiles.at(index).isSelected);
}

void UninstallSession::setAllSelected(bool selected)
{
    for (qsizetype i = 0; i < m_discoveredFiles.size(); ++i)
        setSelected(i, selected);
}

void UninstallSession::selectAll(FileCategory category)
{
    setSelectedWhere(category, true);
}

void UninstallSession::deselectAll(FileCategory category)
{
    setSelectedWhere(category, false);
}

void UninstallSession::setSelectedWhere(FileCategory category, bool selected)
{
    for (qsizetype i = 0; i < m_discoveredFiles.size(); ++i) {
        if (m_discoveredFiles.at(i).category == category)
            setSelected(i, selected);
    }
}

void UninstallSession::setSelected(qsizetype index, bool selected)
{
    emit willChange();
    m_discoveredFiles[index].isSelected = selected;
    emit fileChanged(int(index));
    emit selectionChanged();
}
