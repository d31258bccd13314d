// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

// Unsigned big-endian numbers in untrusted bytes (binary property lists, Mach-O headers, icns).
// The callers check the bounds first: each reader knows what a short read means for it.
namespace BigEndian {

// The number in `size` bytes (1 to 8) at `at`.
[[nodiscard]] inline quint64 read(const QByteArray &bytes, quint64 at, int size)
{
    quint64 value = 0;
    for (int i = 0; i < size; ++i)
        value = (value << 8) | quint8(bytes[qsizetype(at) + i]);
    return value;
}

[[nodiscard]] inline quint32 read32(const QByteArray &bytes, quint64 at)
{
    return quint32(read(bytes, at, 4));
}

[[nodiscard]] inline quint64 read64(const QByteArray &bytes, quint64 at)
{
    return read(bytes, at, 8);
}

} // namespace BigEndian
