// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>

// The results list as one flat list of rows, so a session of many thousand items scrolls
// through one virtualised view: by application (a header per session, then its items, or a
// scanning or protected line) when there are several sessions, by category (a header per
// non-empty category, then its items) for a single one. Selection changes are gathered and
// reported once per turn of the event loop, so "All" on a long list repaints once.
class ResultsListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool byCategory READ byCategory NOTIFY byCategoryChanged)

public:
    enum class Role {
        kind = Qt::UserRole + 1,
        session,
        title,
        detail,
        symbol,
        iconSource,
        showsSelectionButtons,
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
    };
    Q_ENUM(Role)
    enum class RowKind { appHeader, scanning, protectedApp, categoryHeader, file };
    Q_ENUM(RowKind)
    // How the badge is coloured: the views map each tone to one colour.
    enum class BadgeTone { none, orange, secondary, blue };
    Q_ENUM(BadgeTone)
    // Where a row sits in the run of rows under one header, for the rounded group background.
    enum class GroupPosition { header, first, middle, last, only };
    Q_ENUM(GroupPosition)

    explicit ResultsListModel(QObject *parent = nullptr);

    void setSessions(const QList<UninstallSession *> &sessions);
    [[nodiscard]] bool byCategory() const { return m_sessions.size() == 1; }

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

private:
    struct Row
    {
        RowKind kind;
        int session;
        int file = -1; // index in the session's discoveredFiles
        FileCategory category = FileCategory::other;
    };

    void rebuild();
    void appendAppRows(int sessionIndex);
    void appendCategoryRows(int sessionIndex);
    void observe(UninstallSession *session);
    void markChanged(int sessionIndex, int fileIndex);
    [[nodiscard]] QVariant headerData(const Row &row, Role role) const;
    [[nodiscard]] QVariant fileData(const Row &row, Role role) const;
    [[nodiscard]] QString appHeaderDetail(const UninstallSession &session) const;
    [[nodiscard]] GroupPosition groupPosition(int row) const;

    QList<QPointer<UninstallSession>> m_sessions;
    QList<Row> m_rows;
    QList<QList<int>> m_rowOfFile; // per session: discoveredFiles index -> row
    QList<QMetaObject::Connection> m_connections;
    int m_dirtyFirst = -1;
    int m_dirtyLast = -1;
    bool m_flushPending = false;
};
