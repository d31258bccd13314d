// SPDX-License-Identifier: MIT
#include "ResultsListModel.h"

#include "ItemBadge.h"
#include "ResultsRules.h"
#include "SymbolImages.h"

#include <QMetaEnum>
#include <QTimer>

namespace {
template <typename Enum> QString keyOf(Enum value)
{
    return QString::fromLatin1(QMetaEnum::fromType<Enum>().valueToKey(int(value)));
}
} // namespace

ResultsListModel::ResultsListModel(QObject *parent) : QAbstractListModel(parent) {}

void ResultsListModel::setSessions(const QList<UninstallSession *> &sessions)
{
    const bool wasByCategory = byCategory();
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_sessions.clear();
    for (UninstallSession *session : sessions) {
        m_sessions.append(session);
        observe(session);
    }
    rebuild();
    if (wasByCategory != byCategory())
        emit byCategoryChanged();
}

void ResultsListModel::observe(UninstallSession *session)
{
    const int sessionIndex = int(m_sessions.size()) - 1;
    const auto restructure = [this] { rebuild(); };
    m_connections << connect(session, &UninstallSession::discoveredFilesChanged, this, restructure)
                  << connect(session, &UninstallSession::statusChanged, this, restructure)
                  << connect(session, &UninstallSession::appInfoChanged, this, restructure)
                  << connect(session, &UninstallSession::fileChanged, this,
                             [this, sessionIndex](int file) { markChanged(sessionIndex, file); });
}

void ResultsListModel::rebuild()
{
    beginResetModel();
    m_rows.clear();
    m_rowOfFile.clear();
    m_dirtyFirst = m_dirtyLast = -1;
    for (int i = 0; i < m_sessions.size(); ++i) {
        m_rowOfFile.append(QList<int>(m_sessions.at(i) ? m_sessions.at(i)->fileCount() : 0, -1));
        if (!m_sessions.at(i))
            continue;
        if (byCategory())
            appendCategoryRows(i);
        else
            appendAppRows(i);
    }
    endResetModel();
}

void ResultsListModel::appendAppRows(int sessionIndex)
{
    const UninstallSession &session = *m_sessions.at(sessionIndex);
    m_rows.append({RowKind::appHeader, sessionIndex});
    if (session.status().kind() == UninstallStatus::Kind::scanning) {
        m_rows.append({RowKind::scanning, sessionIndex});
        return;
    }
    if (ResultsRules::isSIPProtected(session)) {
        m_rows.append({RowKind::protectedApp, sessionIndex});
        return;
    }
    const auto &files = session.discoveredFiles();
    for (int file = 0; file < files.size(); ++file) {
        m_rowOfFile[sessionIndex][file] = int(m_rows.size());
        m_rows.append({RowKind::file, sessionIndex, file, files.at(file).category});
    }
}

void ResultsListModel::appendCategoryRows(int sessionIndex)
{
    const auto &files = m_sessions.at(sessionIndex)->discoveredFiles();
    // One pass to bucket the indexes, then the buckets in declaration order.
    QList<QList<int>> buckets(allFileCategories().size());
    for (int file = 0; file < files.size(); ++file)
        buckets[int(files.at(file).category)].append(file);
    for (const FileCategory category : allFileCategories()) {
        const QList<int> &bucket = buckets.at(int(category));
        if (bucket.isEmpty())
            continue;
        m_rows.append({RowKind::categoryHeader, sessionIndex, -1, category});
        for (const int file : bucket) {
            m_rowOfFile[sessionIndex][file] = int(m_rows.size());
            m_rows.append({RowKind::file, sessionIndex, file, category});
        }
    }
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
                     {int(Role::isSelected), int(Role::badgeText), int(Role::badgeTone)});
    // The per-app headers show the selection totals.
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).kind == RowKind::appHeader)
            emit dataChanged(index(row), index(row), {int(Role::detail)});
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
    // Enumerations reach QML by their key ("file", "appHeader"): QML cannot name lowercase keys.
    if (which == Role::kind)
        return keyOf(row.kind);
    if (which == Role::session)
        return QVariant::fromValue<QObject *>(m_sessions.at(row.session).get());
    if (which == Role::groupPosition)
        return keyOf(groupPosition(index.row()));
    if (!m_sessions.at(row.session))
        return {};
    return row.kind == RowKind::file ? fileData(row, which) : headerData(row, which);
}

QVariant ResultsListModel::headerData(const Row &row, Role role) const
{
    const UninstallSession &session = *m_sessions.at(row.session);
    const bool isCategory = row.kind == RowKind::categoryHeader;
    switch (role) {
    case Role::title:
        return isCategory ? displayName(row.category) : session.displayName();
    case Role::symbol:
        return isCategory ? SymbolImages::categorySymbol(row.category) : QString();
    case Role::iconSource:
        return isCategory ? QString() : ResultsRules::iconSource(session.appInfo());
    case Role::detail:
        if (isCategory)
            return QString::number(std::count_if(
                       session.discoveredFiles().cbegin(), session.discoveredFiles().cend(),
                       [&](const FileItem &item) { return item.category == row.category; })) +
                   QStringLiteral(" items");
        return appHeaderDetail(session);
    case Role::showsSelectionButtons:
        return isCategory || !appHeaderDetail(session).isEmpty();
    default:
        return {};
    }
}

QString ResultsListModel::appHeaderDetail(const UninstallSession &session) const
{
    if (session.status().kind() != UninstallStatus::Kind::ready ||
        ResultsRules::isSIPProtected(session))
        return {};
    return ResultsRules::selectionSummary(session);
}

ResultsListModel::GroupPosition ResultsListModel::groupPosition(int row) const
{
    const auto isHeader = [this](int r) {
        return r < 0 || r >= m_rows.size() || m_rows.at(r).kind == RowKind::appHeader ||
               m_rows.at(r).kind == RowKind::categoryHeader;
    };
    if (isHeader(row))
        return GroupPosition::header;
    const bool first = isHeader(row - 1);
    const bool last = isHeader(row + 1);
    if (first && last)
        return GroupPosition::only;
    if (first)
        return GroupPosition::first;
    return last ? GroupPosition::last : GroupPosition::middle;
}

QVariant ResultsListModel::fileData(const Row &row, Role role) const
{
    const FileItem &item = m_sessions.at(row.session)->discoveredFiles().at(row.file);
    switch (role) {
    case Role::displayPath:
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
        return ItemBadge::isSystemProtected(item);
    case Role::badgeText:
        return ItemBadge::text(item);
    case Role::badgeTone:
        switch (ItemBadge::kind(item)) {
        case ItemBadge::Kind::partOfMacOS:
        case ItemBadge::Kind::lowConfidence:
            return keyOf(BadgeTone::orange);
        case ItemBadge::Kind::note:
            return keyOf(item.isSelected ? BadgeTone::secondary : BadgeTone::orange);
        case ItemBadge::Kind::requiresAdmin:
            return keyOf(BadgeTone::blue);
        case ItemBadge::Kind::none:
            break;
        }
        return keyOf(BadgeTone::none);
    default:
        return {};
    }
}

QHash<int, QByteArray> ResultsListModel::roleNames() const
{
    static const QHash<int, QByteArray> names{
        {int(Role::kind), "kind"},
        {int(Role::session), "session"},
        {int(Role::title), "title"},
        {int(Role::detail), "detail"},
        {int(Role::symbol), "symbol"},
        {int(Role::iconSource), "iconSource"},
        {int(Role::showsSelectionButtons), "showsSelectionButtons"},
        {int(Role::displayPath), "displayPath"},
        {int(Role::sizeText), "sizeText"},
        {int(Role::categoryName), "categoryName"},
        {int(Role::categorySymbol), "categorySymbol"},
        {int(Role::showsCategory), "showsCategory"},
        {int(Role::isSelected), "isSelected"},
        {int(Role::isSIPProtected), "isSIPProtected"},
        {int(Role::badgeText), "badgeText"},
        {int(Role::badgeTone), "badgeTone"},
        {int(Role::groupPosition), "groupPosition"},
    };
    return names;
}

void ResultsListModel::toggle(int row)
{
    if (row < 0 || row >= m_rows.size() || m_rows.at(row).kind != RowKind::file)
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
    if (header.kind == RowKind::appHeader)
        session->setAllSelected(selected);
    else if (header.kind == RowKind::categoryHeader && selected)
        session->selectAll(header.category);
    else if (header.kind == RowKind::categoryHeader)
        session->deselectAll(header.category);
}
