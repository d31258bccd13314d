// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QSharedPointer>
#include <QString>
#include <QTextStream>

class MainViewModel;
class SystemLayout;
class UninstallSession;
struct FileItem;

// How quenzo-cli shows sessions: readable text or JSON.
namespace SessionReport {

[[nodiscard]] QJsonObject itemJson(const FileItem &item);
[[nodiscard]] QJsonObject sessionJson(const UninstallSession &session);
// {"notice": ..., "sessions": [...]}
[[nodiscard]] QJsonObject controllerJson(const MainViewModel &viewModel);

// The session's record, then its items grouped by category with sizes and badges, then totals.
void writeText(QTextStream &out, const UninstallSession &session, const SystemLayout &layout);

} // namespace SessionReport
