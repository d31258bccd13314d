// SPDX-License-Identifier: MIT
#include "LogCategories.h"

Q_LOGGING_CATEGORY(lcDiscovery, "quenzo.discovery", QtInfoMsg)
Q_LOGGING_CATEGORY(lcRemoval, "quenzo.removal", QtInfoMsg)
Q_LOGGING_CATEGORY(lcPlatform, "quenzo.platform", QtInfoMsg)

void LogCategories::enableVerbose()
{
    QLoggingCategory::setFilterRules(QStringLiteral("quenzo.*.debug=true"));
}
