// SPDX-License-Identifier: MIT
#include "UiLogging.h"

Q_LOGGING_CATEGORY(lcUi, "quenzo.ui", QtInfoMsg)
