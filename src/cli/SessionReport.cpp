// SPDX-License-Identifier: MIT
#include "SessionReport.h"

#include "Models/ByteCountFormatter.h"
#include "Platform/SystemLayout.h"
#include "ViewModels/ItemBadge.h"
#include "ViewModels/MainViewModel.h"

#include <QJsonArray>

namespace SessionReport {

namespace {
template <typename T> QJsonValue optionalJson(const std::optional<T> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}
} // namespace

QJsonObject itemJson(const FileItem &item)
{
    return QJsonObject{
        {QStringLiteral("path"), item.path},
        {QStringLiteral("displayPath"), item.displayPath()},
        {QStringLiteral("category"), caseName(item.category)},
        {QStringLiteral("size"), item.size},
        {QStringLiteral("formattedSize"), item.formattedSize()},
        {QStringLiteral("isSelected"), item.isSelected},
        {QStringLiteral("confidence"), item.confidence},
        {QStringLiteral("note"), optionalJson(item.note)},
        {QStringLiteral("reason"), item.reason},
        {QStringLiteral("isProtected"), item.isProtected},
        {QStringLiteral("packageID"), optionalJson(item.packageID)},
    };
}

QJsonObject sessionJson(const UninstallSession &session)
{
    const AppInfo &app = session.appInfo();
    QJsonArray items;
    for (const FileItem &item : session.discoveredFiles())
        items.append(itemJson(item));
    QJsonArray logs;
    for (const LogEntry &entry : session.logs())
        logs.append(QJsonObject{{QStringLiteral("message"), entry.message},
                                {QStringLiteral("isSuccess"), entry.isSuccess}});
    return QJsonObject{
        {QStringLiteral("name"), app.name},
        {QStringLiteral("displayName"), app.displayName()},
        {QStringLiteral("bundleIdentifier"), app.bundleIdentifier},
        {QStringLiteral("bundlePath"), app.bundlePath},
        {QStringLiteral("version"), optionalJson(app.version)},
        {QStringLiteral("isSystemProtected"), app.isSystemProtected},
        {QStringLiteral("status"), session.status().caseName()},
        {QStringLiteral("items"), items},
        {QStringLiteral("selectedFilesCount"), session.selectedFilesCount()},
        {QStringLiteral("totalSize"), session.totalSize()},
        {QStringLiteral("removedCount"), session.removedCount()},
        {QStringLiteral("failedCount"), session.failedCount()},
        {QStringLiteral("removedBytes"), session.removedBytes()},
        {QStringLiteral("logs"), logs},
    };
}

QJsonObject controllerJson(const MainViewModel &viewModel)
{
    QJsonArray sessions;
    for (const auto &session : viewModel.sessions())
        sessions.append(sessionJson(*session));
    return QJsonObject{{QStringLiteral("notice"), optionalJson(viewModel.notice())},
                       {QStringLiteral("sessions"), sessions}};
}

void writeText(QTextStream &out, const UninstallSession &session, const SystemLayout &layout)
{
    const AppInfo &app = session.appInfo();
    out << app.displayName();
    if (app.version)
        out << ' ' << *app.version;
    out << " (" << app.bundleIdentifier << ")";
    if (app.isSystemProtected)
        out << " - Part of macOS, can't be uninstalled. It will be skipped.";
    out << '\n' << "  " << layout.displayPath(app.bundlePath) << '\n';
    const auto groups = session.filesByCategory();
    for (const FileCategory category : allFileCategories()) {
        const auto it = groups.constFind(category);
        if (it == groups.cend())
            continue;
        out << '\n' << "  " << displayName(category) << " (" << it->size() << " items)\n";
        for (const FileItem &item : *it) {
            out << "    [" << (item.isSelected ? 'x' : ' ') << "] " << item.displayPath() << "  "
                << item.formattedSize();
            const QString badge = ItemBadge::text(item);
            if (!badge.isEmpty())
                out << "  " << badge;
            if (!item.reason.isEmpty())
                out << "  (" << item.reason << ')';
            out << '\n';
        }
    }
    out << '\n'
        << "  " << session.selectedFilesCount() << " of " << session.discoveredFiles().size()
        << " selected · " << formattedByteCount(session.totalSize()) << '\n';
    for (const LogEntry &entry : session.logs())
        out << "  " << (entry.isSuccess ? "" : "! ") << entry.message << '\n';
}

} // namespace SessionReport
