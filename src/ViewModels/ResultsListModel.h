// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>

// The results list as one flat list of rows, so a session of many thousand items scrolls
// through one virtualised view: by application (a header per session, then its items, or a
// scanning or protected line) when there are several sessions, by category (a header per
// non-empty category, then its items) for a single one. The rows follow the sessions in place
// (removals and inserts of the rows that differ, dataChanged for the rest), so the view keeps
// its scroll position, its delegates and their keyboard focus. Selection changes are gathered
// and reported once per turn of the event loop, so "All" on a long list repaints once.
class ResultsListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool byCategory READ byCategory NOTIFY byCategoryChanged)
    Q_PROPERTY(SortOrder sortOrder READ sortOrder WRITE setSortOrder NOTIFY arrangementChanged)
    Q_PROPERTY(QString filterText READ filterText WRITE setFilterText NOTIFY arrangementChanged)

public:
    enum class Role {
        kind = Qt::UserRole + 1,
        session,
        title,
        detail,
        symbol,
        iconSource,
        showsSelectionButtons,
        path,
        displayPath,
        sizeText,
        categoryName,
        categorySymbol,
        showsCategory,
        isSelected,
        isSIPProtected,
        badgeText,
        badgeTone,
        groupPosition,
        reason,
        accessibleName,
        accessibleDescription,
        selectAllName,
        selectNoneName,
        removeName,
    };
    Q_ENUM(Role)
    enum class RowKind { AppHeader, Scanning, ProtectedApp, CategoryHeader, File };
    Q_ENUM(RowKind)
    // How the badge is coloured: the views map each tone to one colour.
    enum class BadgeTone { None, Warning, Secondary, Accent };
    Q_ENUM(BadgeTone)
    // Where a row sits in the run of rows under one header, for the rounded group background.
    enum class GroupPosition { Header, First, Middle, Last, Only };
    Q_ENUM(GroupPosition)
    // The order of the items under one header; Found keeps discovery's order.
    enum class SortOrder { Found, Name, Size, Category };
    Q_ENUM(SortOrder)

    explicit ResultsListModel(QObject *parent = nullptr);

    void setSessions(const QList<UninstallSession *> &sessions);
    [[nodiscard]] bool byCategory() const { return m_sessions.size() == 1; }
    [[nodiscard]] SortOrder sortOrder() const { return m_sortOrder; }
    void setSortOrder(SortOrder order);
    [[nodiscard]] QString filterText() const { return m_filterText; }
    // Keeps the items whose path or category contains the text, ignoring case.
    void setFilterText(const QString &text);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    // The row's checkbox was flipped.
    Q_INVOKABLE void toggle(int row);
    // "All"/"None" of a header row: the whole session, or the category of a single session.
    Q_INVOKABLE void setAllSelected(int row, bool selected);
    // Reports the gathered selection changes now instead of on the next turn of the loop.
    Q_INVOKABLE void flush();

signals:
    void byCategoryChanged();
    void arrangementChanged();

private:
    struct Row
    {
        RowKind kind;
        int session;
        int file = -1; // index in the session's discoveredFiles
        FileCategory category = FileCategory::other;
    };
    struct Layout
    {
        QList<Row> rows;
        QList<QList<int>> rowOfFile; // per session: discoveredFiles index -> row
    };

    [[nodiscard]] Layout layOut(const QList<QPointer<UninstallSession>> &sessions) const;
    void appendAppRows(Layout &layout, const UninstallSession &session, int sessionIndex) const;
    void appendCategoryRows(Layout &layout, const UninstallSession &session,
                            int sessionIndex) const;
    [[nodiscard]] QList<int> arrangedFiles(const UninstallSession &session) const;
    void update(const QList<QPointer<UninstallSession>> &sessions);
    void observe(UninstallSession *session, int sessionIndex);
    void markChanged(int sessionIndex, int fileIndex);
    [[nodiscard]] QVariant headerData(const Row &row, Role role) const;
    [[nodiscard]] QVariant fileData(const Row &row, Role role) const;
    [[nodiscard]] QString appHeaderDetail(const UninstallSession &session) const;
    [[nodiscard]] GroupPosition groupPosition(int row) const;

    QList<QPointer<UninstallSession>> m_sessions;
    QList<Row> m_rows;
    QList<QList<int>> m_rowOfFile;
    QList<QMetaObject::Connection> m_connections;
    SortOrder m_sortOrder = SortOrder::Found;
    QString m_filterText;
    int m_dirtyFirst = -1;
    int m_dirtyLast = -1;
    bool m_flushPending = false;
};
