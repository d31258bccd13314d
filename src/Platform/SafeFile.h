// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// Reads a file that someone else may have planted: only a regular file is read (a FIFO or a
// device is refused without blocking, a link is not followed where that is asked), and never
// more than a bound, whatever the file grows to meanwhile.
class SafeFile
{
public:
    SafeFile() = delete;

    enum class Links { follow, refuse };

    // The whole file; nothing when it is not a regular file, cannot be read or is larger than
    // `maximumSize`.
    [[nodiscard]] static std::optional<QByteArray> read(const QString &path, qint64 maximumSize,
                                                        Links links = Links::follow);
    [[nodiscard]] static std::optional<QByteArray> read(const QByteArray &path, qint64 maximumSize,
                                                        Links links = Links::follow);

    // An open descriptor of the regular file at `path` (O_NONBLOCK cleared again), or -1.
    // The caller closes it.
    [[nodiscard]] static int openRegular(const QByteArray &path, Links links);
};
