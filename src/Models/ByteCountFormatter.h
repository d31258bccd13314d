// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// A byte count as the macOS file byte-count style writes it in English: "Zero KB", "1 byte",
// "999 bytes", "1,000 KB", "1.5 MB", "2.25 GB". The one function every shown size goes through.
[[nodiscard]] QString formattedByteCount(qint64 bytes);
