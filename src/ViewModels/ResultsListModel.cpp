// SPDX-License-Identifier: MIT
#include "ResultsListModel.h"

#include "RoleNames.h"

#include "ItemBadge.h"
#include "ResultsRules.h"
#include "SymbolImages.h"

#include <QTimer>
#include <tuple>

ResultsListModel::ResultsListModel(QObject *parent) : QAbstractListModel(parent) {}

void ResultsListModel::setSessions(const QList<UninstallSession *> &sessions)
{
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    QList<QPointer<UninstallSession>> list;
    for (UninstallSession *session : sessions) {
        observe(session, int(list.size()));
        list.append(session);
    }
    const bool wasByCategory = byCategory();
    update(list);
    if (wasByCategory != byCategory())
        emit byCategoryChanged();
}

void ResultsListModel::setSortOrder(SortOrder order)
{
    if (order == m_sortOrder)
        return;
    m_sortOrder = order;
    update(m_sessions);
    emit arrangementChanged();
}

void ResultsListModel::setFilterText(const QString &text)
{
    if (text == m_filterText)
        return;
    m_filterText = text;
    update(m_sessions);
    emit arrangementChanged();
}

void ResultsListModel::observe(UninstallSession *session, int sessionIndex)
{
    const auto restructure = [this] { update(m_sessions); };
    m_connections << connect(session, &UninstallSession::discoveredFilesChanged, this, restructure)
                  << connect(session, &UninstallSession::statusChanged, this, restructure)
                  << connect(session, &UninstallSession::appInfoChanged, this, restructure)
                  << connect(session, &UninstallSession::fileChanged, this,
                             [this, sessionIndex](int file) { markChanged(sessionIndex, file); });
}

ResultsListModel::Layout
ResultsListModel::layOut(const QList<QPointer<UninstallSession>> &sessions) const
{
    Layout layout;
    for (int i = 0; i < sessions.size(); ++i) {
        const UninstallSession *session = sessions.at(i);
        layout.rowOfFile.append(QList<int>(session ? session->fileCount() : 0, -1));
        if (!session)
            continue;
        if (sessions.size() == 1)
            appendCategoryRows(layout, *session, i);
        else
            appendAppRows(layout, *session, i);
    }
    return layout;
}

QList<int> ResultsListModel::arrangedFiles(const UninstallSession &session) const
{
    const auto &files = session.discoveredFiles();
    QList<int> order;
    for (int file = 0; file < files.size(); ++file) {
        const FileItem &item = files.at(file);
        if (m_filterText.isEmpty() ||
            item.displayPath().contains(m_filterText, Qt::CaseInsensitive) ||
            displayName(item.category).contains(m_filterText, Qt::CaseInsensitive))
            order.append(file);
    }
    const auto name = [&files](int file) {
        const QString &path = files.at(file).path;
        return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    };
    switch (m_sortOrder) {
    case SortOrder::Found:
        break;
    case SortOrder::Name:
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return name(a).compare(name(b), Qt::CaseInsensitive) < 0;
        });
        break;
    case SortOrder::Size:
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return files.at(a).size > files.at(b).size; });
        break;
    case SortOrder::Category:
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return files.at(a).category < files.at(b).category; });
        break;
    }
    return order;
}

void ResultsListModel::appendAppRows(Layout &layout, const UninstallSession &session,
                                     int sessionIndex) const
{
    layout.rows.append({RowKind::AppHeader, sessionIndex});
    if (session.status().kind() == UninstallStatus::Kind::scanning) {
        layout.rows.append({RowKind::Scanning, sessionIndex});
        return;
    }
    if (session.isSystemProtected()) {
        layout.rows.append({RowKind::ProtectedApp, sessionIndex});
        return;
    }
    for (const int file : arrangedFiles(session)) {
        layout.rowOfFile[sessionIndex][file] = int(layout.rows.size());
        layout.rows.append(
            {RowKind::File, sessionIndex, file, session.discoveredFiles().at(file).category});
    }
}

void ResultsListModel::appendCategoryRows(Layout &layout, const UninstallSession &session,
                                          int sessionIndex) const
{
    // One pass to bucket the indexes, then the buckets in declaration order.
    QList<QList<int>> buckets(allFileCategories().size());
    for (const int file : arrangedFiles(session))
        buckets[int(session.discoveredFiles().at(file).category)].append(file);
    for (const FileCategory category : allFileCategories()) {
        const QList<int> &bucket = buckets.at(int(category));
        if (bucket.isEmpty())
            continue;
        layout.rows.append({RowKind::CategoryHeader, sessionIndex, -1, category});
        for (const int file : bucket) {
            layout.rowOfFile[sessionIndex][file] = int(layout.rows.size());
            layout.rows.append({RowKind::File, sessionIndex, file, category});
        }
    }
}

// Brings the rows to the layout of `sessions` with the fewest structural changes: the rows that
// both layouts share at the start and at the end stay (and so do their delegates), the run
// between them is removed and the new run inserted.
void ResultsListModel::update(const QList<QPointer<UninstallSession>> &sessions)
{
    Layout next = layOut(sessions);
    const auto identity = [](const QList<QPointer<UninstallSession>> &owners, const Row &row) {
        const UninstallSession *session = owners.value(row.session);
        const QUuid file = session && row.file >= 0 && row.file < session->fileCount()
                               ? session->discoveredFiles().at(row.file).id
                               : QUuid();
        return std::tuple(row.kind, session, file, row.category);
    };
    const auto same = [&](int oldRow, int newRow) {
        return identity(m_sessions, m_rows.at(oldRow)) == identity(sessions, next.rows.at(newRow));
    };
    const int oldCount = int(m_rows.size());
    const int newCount = int(next.rows.size());
    int head = 0;
    while (head < oldCount && head < newCount && same(head, head))
        ++head;
    int tail = 0;
    while (tail < oldCount - head && tail < newCount - head &&
           same(oldCount - 1 - tail, newCount - 1 - tail))
        ++tail;

    m_dirtyFirst = m_dirtyLast = -1;
    if (head + tail < oldCount) {
        beginRemoveRows({}, head, oldCount - tail - 1);
        m_rows.remove(head, oldCount - tail - head);
        endRemoveRows();
    }
    // The rows that stay now point into the new session list.
    m_sessions = sessions;
    m_rowOfFile = next.rowOfFile;
    const QList<Row> kept = next.rows.mid(0, head) + next.rows.mid(newCount - tail);
    m_rows = kept;
    if (head + tail < newCount) {
        beginInsertRows({}, head, newCount - tail - 1);
        m_rows = next.rows;
        endInsertRows();
    }
    m_rows = std::move(next.rows);
    // Totals, states and group corners of the rows that stayed may have changed.
    if (!m_rows.isEmpty())
        emit dataChanged(index(0), index(int(m_rows.size()) - 1));
}

void ResultsListModel::markChanged(int sessionIndex, int fileIndex)
{
    const int row = m_rowOfFile.value(sessionIndex).value(fileIndex, -1);
    if (row < 0)
        return;
    m_dirtyFirst = m_dirtyFirst < 0 ? row : std::min(m_dirtyFirst, row);
    m_dirtyLast = std::max(m_dirtyLast, row);
    if (!m_flushPending) {
        m_flushPending = true;
        QTimer::singleShot(0, this, &ResultsListModel::flush);
    }
}

void ResultsListModel::flush()
{
    m_flushPending = false;
    if (m_dirtyFirst < 0)
        return;
    const int first = m_dirtyFirst;
    const int last = m_dirtyLast;
    m_dirtyFirst = m_dirtyLast = -1;
    emit dataChanged(index(first), index(last),
                     {int(Role::isSelected), int(Role::badgeText), int(Role::badgeTone),
                      int(Role::accessibleDescription)});
    // The per-app headers show the selection totals.
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).kind == RowKind::AppHeader)
            emit dataChanged(index(row), index(row),
                             {int(Role::detail), int(Role::accessibleDescription)});
    }
}

int ResultsListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ResultsListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    const auto which = Role(role);
    if (which == Role::kind)
        return QVariant::fromValue(row.kind);
    if (which == Role::session)
        return QVariant::fromValue<QObject *>(m_sessions.at(row.session).get());
    if (which == Role::groupPosition)
        return QVariant::fromValue(groupPosition(index.row()));
    if (!m_sessions.at(row.session))
        return {};
    return row.kind == RowKind::File ? fileData(row, which) : headerData(row, which);
}

QVariant ResultsListModel::headerData(const Row &row, Role role) const
{
    const UninstallSession &session = *m_sessions.at(row.session);
    const bool isCategory = row.kind == RowKind::CategoryHeader;
    const QString title = isCategory ? displayName(row.category) : session.displayName();
    switch (role) {
    case Role::title:
    case Role::accessibleName:
        return title;
    case Role::symbol:
        return isCategory ? SymbolImages::categorySymbol(row.category) : QString();
    case Role::iconSource:
        return isCategory ? QString() : ResultsRules::iconSource(session.appInfo());
    case Role::detail:
    case Role::accessibleDescription:
        if (isCategory)
            return QString::number(std::count_if(
                       session.discoveredFiles().cbegin(), session.discoveredFiles().cend(),
                       [&](const FileItem &item) { return item.category == row.category; })) +
                   QStringLiteral(" items");
        return appHeaderDetail(session);
    case Role::showsSelectionButtons:
        return isCategory || !appHeaderDetail(session).isEmpty();
    case Role::selectAllName:
        return QStringLiteral("Select all in ") + title;
    case Role::selectNoneName:
        return QStringLiteral("Select none in ") + title;
    case Role::removeName:
        return QStringLiteral("Remove ") + title + QStringLiteral(" from the list");
    default:
        return {};
    }
}

QString ResultsListModel::appHeaderDetail(const UninstallSession &session) const
{
    if (session.status().kind() != UninstallStatus::Kind::ready || session.isSystemProtected())
        return {};
    return ResultsRules::selectionSummary(session);
}

ResultsListModel::GroupPosition ResultsListModel::groupPosition(int row) const
{
    const auto isHeader = [this](int r) {
        return r < 0 || r >= m_rows.size() || m_rows.at(r).kind == RowKind::AppHeader ||
               m_rows.at(r).kind == RowKind::CategoryHeader;
    };
    if (isHeader(row))
        return GroupPosition::Header;
    const bool first = isHeader(row - 1);
    const bool last = isHeader(row + 1);
    if (first && last)
        return GroupPosition::Only;
    if (first)
        return GroupPosition::First;
    return last ? GroupPosition::Last : GroupPosition::Middle;
}

namespace {
ResultsListModel::BadgeTone badgeTone(const FileItem &item)
{
    using Tone = ResultsListModel::BadgeTone;
    switch (ItemBadge::kind(item)) {
    case ItemBadge::Kind::partOfMacOS:
    case ItemBadge::Kind::lowConfidence:
        return Tone::Warning;
    case ItemBadge::Kind::note:
        return item.isSelected ? Tone::Secondary : Tone::Warning;
    case ItemBadge::Kind::requiresAdmin:
        return Tone::Accent;
    case ItemBadge::Kind::none:
        break;
    }
    return Tone::None;
}

// What a screen reader says after the row's name: everything the row shows, in words.
QString spokenDescription(const FileItem &item, bool showsCategory)
{
    QStringList parts{item.formattedSize()};
    if (showsCategory)
        parts.append(displayName(item.category));
    const QString badge = ItemBadge::text(item).remove(QStringLiteral("• "));
    if (!badge.isEmpty())
        parts.append(badge);
    if (!item.reason.isEmpty())
        parts.append(QStringLiteral("found by ") + item.reason);
    parts.append(item.isProtected  ? QStringLiteral("cannot be selected")
                 : item.isSelected ? QStringLiteral("selected")
                                   : QStringLiteral("not selected"));
    return parts.join(QStringLiteral(", "));
}
} // namespace

QVariant ResultsListModel::fileData(const Row &row, Role role) const
{
    const FileItem &item = m_sessions.at(row.session)->discoveredFiles().at(row.file);
    switch (role) {
    case Role::path:
        return item.path;
    case Role::displayPath:
    case Role::accessibleName:
        return item.displayPath();
    case Role::sizeText:
        return item.formattedSize();
    case Role::categoryName:
        return displayName(item.category);
    case Role::categorySymbol:
        return SymbolImages::categorySymbol(item.category);
    case Role::showsCategory:
        return !byCategory();
    case Role::isSelected:
        return item.isSelected;
    case Role::isSIPProtected:
        return item.isProtected;
    case Role::badgeText:
        return ItemBadge::text(item);
    case Role::badgeTone:
        return QVariant::fromValue(badgeTone(item));
    case Role::reason:
        return item.reason;
    case Role::accessibleDescription:
        return spokenDescription(item, !byCategory());
    default:
        return {};
    }
}

QHash<int, QByteArray> ResultsListModel::roleNames() const
{
    static const QHash<int, QByteArray> names = roleNamesOf<Role>();
    return names;
}

void ResultsListModel::toggle(int row)
{
    if (row < 0 || row >= m_rows.size() || m_rows.at(row).kind != RowKind::File)
        return;
    if (UninstallSession *session = m_sessions.at(m_rows.at(row).session))
        session->toggleFileSelectionAt(m_rows.at(row).file);
}

void ResultsListModel::setAllSelected(int row, bool selected)
{
    if (row < 0 || row >= m_rows.size())
        return;
    const Row &header = m_rows.at(row);
    UninstallSession *session = m_sessions.at(header.session);
    if (!session)
        return;
    if (header.kind == RowKind::AppHeader)
        session->setAllSelected(selected);
    else if (header.kind == RowKind::CategoryHeader && selected)
        session->selectAll(header.category);
    else if (header.kind == RowKind::CategoryHeader)
        session->deselectAll(header.category);
}
