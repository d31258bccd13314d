// SPDX-License-Identifier: MIT
#pragma once

#include "FileCategory.h"

#include <QHashFunctions>
#include <QString>
#include <QUuid>
#include <optional>

// One discovered file or folder. Equal (and hashed) by id alone, so a copy whose selection
// changed is still the same item.
struct FileItem
{
    QUuid id = QUuid::createUuid();
    QString path;
    FileCategory category = FileCategory::other;
    qint64 size = 0;
    bool isSelected = true;
    double confidence = 1.0;
    std::optional<QString> note;
    QString reason; // why discovery picked it: "bundle identifier com.acme.writer"
    bool isProtected = false;
    // Whether the user's own rights can write it, read when it was found so that the window
    // never touches the disk.
    bool isWritable = true;
    std::optional<QString> packageID; // installer receipts only
    // Where it lies, read with the Mac's layout when it was found, so that the views need none:
    // the path as the user reads it (the home as "~"; the path itself when empty), and whether
    // it lies in a system folder that only an administrator may change.
    QString shownPath;
    bool requiresAdmin = false;

    // shownPath, or the path when none was set.
    [[nodiscard]] QString displayPath() const;
    [[nodiscard]] QString formattedSize() const;
    // Below this an item is marked as a weak match.
    [[nodiscard]] bool isLowConfidence() const { return confidence < 0.8; }

    friend bool operator==(const FileItem &a, const FileItem &b) { return a.id == b.id; }
};

inline size_t qHash(const FileItem &item, size_t seed = 0) noexcept
{
    return qHash(item.id, seed);
}
