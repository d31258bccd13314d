// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

// quenzo.ui: the window's own failures (icons that cannot be drawn), quiet unless asked for like
// the core's categories (Platform/LogCategories.h).
Q_DECLARE_LOGGING_CATEGORY(lcUi)
