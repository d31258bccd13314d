// SPDX-License-Identifier: MIT
#pragma once

#include "AppInfo.h"
#include "FileItem.h"
#include "LogEntry.h"
#include "UninstallStatus.h"

#include <QHash>
#include <QList>
#include <QObject>

// The unit of work: one dropped application with what was found for it, its state, its log and
// the counters of the uninstall. Lives on the GUI thread; every published change emits
// willChange() first, then its own NOTIFY signal.
class UninstallSession : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name NOTIFY appInfoChanged)
    Q_PROPERTY(QString displayName READ displayName NOTIFY appInfoChanged)
    Q_PROPERTY(QString bundleIdentifier READ bundleIdentifier NOTIFY appInfoChanged)
    Q_PROPERTY(QString bundlePath READ bundlePath NOTIFY appInfoChanged)
    Q_PROPERTY(QString version READ version NOTIFY appInfoChanged)
    Q_PROPERTY(bool hasIcon READ hasIcon NOTIFY appInfoChanged)
    Q_PROPERTY(bool isSystemProtected READ isSystemProtected NOTIFY appInfoChanged)
    Q_PROPERTY(UninstallStatuses::Kind status READ statusKind NOTIFY statusChanged)
    Q_PROPERTY(int fileCount READ fileCount NOTIFY discoveredFilesChanged)
    Q_PROPERTY(int logCount READ logCount NOTIFY logsChanged)
    Q_PROPERTY(int removedCount READ removedCount NOTIFY countersChanged)
    Q_PROPERTY(int failedCount READ failedCount NOTIFY countersChanged)
    Q_PROPERTY(qint64 removedBytes READ removedBytes NOTIFY countersChanged)
    Q_PROPERTY(qint64 totalSize READ totalSize NOTIFY selectionChanged)
    Q_PROPERTY(int selectedFilesCount READ selectedFilesCount NOTIFY selectionChanged)

public:
    explicit UninstallSession(const AppInfo &appInfo, QObject *parent = nullptr);

    [[nodiscard]] const AppInfo &appInfo() const { return m_appInfo; }
    void setAppInfo(const AppInfo &appInfo);

    [[nodiscard]] const QList<FileItem> &discoveredFiles() const { return m_discoveredFiles; }
    void setDiscoveredFiles(const QList<FileItem> &files);

    [[nodiscard]] const UninstallStatus &status() const { return m_status; }
    void setStatus(const UninstallStatus &status);

    [[nodiscard]] const QList<LogEntry> &logs() const { return m_logs; }
    Q_INVOKABLE void addLog(const QString &message, bool isSuccess);

    [[nodiscard]] int removedCount() const { return m_removedCount; }
    [[nodiscard]] int failedCount() const { return m_failedCount; }
    [[nodiscard]] qint64 removedBytes() const { return m_removedBytes; }
    void setRemovedCount(int count);
    void setFailedCount(int count);
    void setRemovedBytes(qint64 bytes);

    // Derived, computed on each read. totalSize saturates instead of wrapping.
    [[nodiscard]] qint64 totalSize() const;
    [[nodiscard]] int selectedFilesCount() const;
    [[nodiscard]] QHash<FileCategory, QList<FileItem>> filesByCategory() const;

    // Selection: one change (willChange + fileChanged) per item written.
    void toggleFileSelection(const FileItem &file);
    Q_INVOKABLE void toggleFileSelectionAt(int index);
    Q_INVOKABLE void setAllSelected(bool selected);
    void selectAll(FileCategory category);
    void deselectAll(FileCategory category);

    // Shorthands for QML and the command line.
    [[nodiscard]] QString name() const { return m_appInfo.name; }
    [[nodiscard]] QString displayName() const { return m_appInfo.displayName(); }
    [[nodiscard]] QString bundleIdentifier() const { return m_appInfo.bundleIdentifier; }
    [[nodiscard]] QString bundlePath() const { return m_appInfo.bundlePath; }
    [[nodiscard]] QString version() const { return m_appInfo.version.value_or(QString()); }
    [[nodiscard]] bool hasIcon() const { return m_appInfo.icon.has_value(); }
    [[nodiscard]] bool isSystemProtected() const { return m_appInfo.isSystemProtected; }
    [[nodiscard]] UninstallStatuses::Kind statusKind() const { return m_status.kind(); }
    [[nodiscard]] int fileCount() const { return int(m_discoveredFiles.size()); }
    [[nodiscard]] int logCount() const { return int(m_logs.size()); }

signals:
    void willChange();
    void appInfoChanged();
    void discoveredFilesChanged(); // the whole list was replaced
    void fileChanged(int index);   // one item was changed in place
    void selectionChanged();       // totals may differ
    void statusChanged();
    void logsChanged();
    void logAdded(const LogEntry &entry);
    void countersChanged();

private:
    void setSelected(qsizetype index, bool selected);
    void setSelectedWhere(FileCategory category, bool selected);

    AppInfo m_appInfo;
    QList<FileItem> m_discoveredFiles;
    UninstallStatus m_status = UninstallStatus::scanning();
    QList<LogEntry> m_logs;
    int m_removedCount = 0;
    int m_failedCount = 0;
    qint64 m_removedBytes = 0;
};
