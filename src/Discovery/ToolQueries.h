// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class SystemLayout;
class ToolRunner;

// The two questions discovery asks system tools. A tool that cannot start, or prints
// undecodable output, answers nothing; exit statuses are not examined.
namespace ToolQueries {

// The installer packages that laid down the file at a Mac path (pkgutil --file-info), in
// output order, operating-system packages and unsafe identifiers left out.
[[nodiscard]] QStringList installerPackageIDs(const SystemLayout &layout, const ToolRunner &runner,
                                              const QString &macPath);

// The Mac paths of the applications whose identifier starts with `prefix`, case-insensitively,
// as the metadata index knows them (mdfind). Nothing for a prefix that is not a plain
// identifier, so no quote or wildcard reaches the query.
[[nodiscard]] QStringList spotlightApps(const SystemLayout &layout, const ToolRunner &runner,
                                        const QString &prefix);

// The query text for a prefix, exactly as mdfind receives it.
[[nodiscard]] QString spotlightQuery(const QString &prefix);

} // namespace ToolQueries
