// SPDX-License-Identifier: MIT
#include "MachOReader.h"

#include "BigEndian.h"
#include "LogCategories.h"
#include "PropertyList.h"

#include "SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <unistd.h>

namespace MachOReader {

namespace {
constexpr quint32 kFatMagic = 0xcafebabe;
constexpr quint32 kFatMagic64 = 0xcafebabf;
constexpr quint32 kMachMagic = 0xfeedface;
constexpr quint32 kMachMagic64 = 0xfeedfacf;
constexpr quint32 kLoadCodeSignature = 0x1d;
constexpr quint32 kSuperBlobMagic = 0xfade0cc0;
constexpr quint32 kEntitlementsMagic = 0xfade7171;
constexpr quint32 kEntitlementsSlot = 5;

// Reads exactly [offset, offset + length) of the device, or nothing. 64-bit arithmetic: no
// header value can wrap around.
std::optional<QByteArray> readAt(QIODevice &device, quint64 offset, quint64 length)
{
    const quint64 size = quint64(device.size());
    if (offset > size || length > size - offset || !device.seek(qint64(offset)))
        return std::nullopt;
    QByteArray bytes = device.read(qint64(length));
    if (quint64(bytes.size()) != length)
        return std::nullopt;
    return bytes;
}

// A window of the file: one architecture of a universal binary, or the whole thin file.
struct Slice
{
    quint64 offset = 0;
    quint64 size = 0;
};

std::optional<QByteArray> readIn(QIODevice &device, const Slice &slice, quint64 offset,
                                 quint64 length)
{
    if (offset > slice.size || length > slice.size - offset)
        return std::nullopt;
    return readAt(device, slice.offset + offset, length);
}

std::optional<QByteArray> entitlementsInSignature(QIODevice &device, const Slice &slice,
                                                  quint64 dataOffset, quint64 dataSize)
{
    const Slice blob{slice.offset + dataOffset, dataSize};
    if (dataOffset > slice.size || dataSize > slice.size - dataOffset)
        return std::nullopt;
    const auto header = readIn(device, blob, 0, 12);
    if (!header || BigEndian::read32(*header, 0) != kSuperBlobMagic)
        return std::nullopt;
    const quint32 count = BigEndian::read32(*header, 8);
    if (count > kMaximumBlobCount)
        return std::nullopt;
    const auto index = readIn(device, blob, 12, quint64(count) * 8);
    if (!index)
        return std::nullopt;
    for (quint32 i = 0; i < count; ++i) {
        if (BigEndian::read32(*index, i * 8) != kEntitlementsSlot)
            continue;
        const quint64 at = BigEndian::read32(*index, i * 8 + 4);
        const auto entry = readIn(device, blob, at, 8);
        if (!entry || BigEndian::read32(*entry, 0) != kEntitlementsMagic)
            return std::nullopt;
        const quint64 length = BigEndian::read32(*entry, 4);
        if (length < 8 || length - 8 > kMaximumEntitlementsBytes)
            return std::nullopt;
        return readIn(device, blob, at + 8, length - 8);
    }
    return std::nullopt;
}

std::optional<QByteArray> entitlementsInSlice(QIODevice &device, const Slice &slice)
{
    const auto magicBytes = readIn(device, slice, 0, 4);
    if (!magicBytes)
        return std::nullopt;
    const quint32 little = qFromLittleEndian<quint32>(magicBytes->constData());
    const quint32 big = BigEndian::read32(*magicBytes, 0);
    const bool isLittle = little == kMachMagic || little == kMachMagic64;
    if (!isLittle && big != kMachMagic && big != kMachMagic64)
        return std::nullopt;
    const bool is64 = (isLittle ? little : big) == kMachMagic64;
    const auto u32 = [isLittle](const QByteArray &bytes, qsizetype at) {
        return isLittle ? qFromLittleEndian<quint32>(bytes.constData() + at)
                        : BigEndian::read32(bytes, at);
    };
    const quint64 headerSize = is64 ? 32 : 28;
    const auto header = readIn(device, slice, 0, headerSize);
    if (!header)
        return std::nullopt;
    const quint32 commandCount = u32(*header, 16);
    const quint32 commandBytes = u32(*header, 20);
    if (commandBytes > kMaximumLoadCommandBytes)
        return std::nullopt;
    const auto commands = readIn(device, slice, headerSize, commandBytes);
    if (!commands)
        return std::nullopt;
    quint64 at = 0;
    for (quint32 i = 0; i < commandCount && at + 8 <= commandBytes; ++i) {
        const quint32 command = u32(*commands, qsizetype(at));
        const quint32 commandSize = u32(*commands, qsizetype(at + 4));
        if (commandSize < 8 || commandSize > commandBytes - at)
            return std::nullopt;
        if (command == kLoadCodeSignature && commandSize >= 16)
            return entitlementsInSignature(device, slice, u32(*commands, qsizetype(at + 8)),
                                           u32(*commands, qsizetype(at + 12)));
        at += commandSize;
    }
    return std::nullopt;
}

std::optional<QByteArray> entitlementsInUniversal(QIODevice &device, bool is64)
{
    const auto header = readAt(device, 0, 8);
    if (!header)
        return std::nullopt;
    const quint32 count = BigEndian::read32(*header, 4);
    if (count > kMaximumArchitectures)
        return std::nullopt;
    const quint64 entrySize = is64 ? 32 : 20;
    const auto entries = readAt(device, 8, quint64(count) * entrySize);
    if (!entries)
        return std::nullopt;
    const quint64 fileSize = quint64(device.size());
    for (quint32 i = 0; i < count; ++i) {
        const qsizetype at = qsizetype(i * entrySize);
        const Slice slice =
            is64 ? Slice{BigEndian::read64(*entries, at + 8), BigEndian::read64(*entries, at + 16)}
                 : Slice{BigEndian::read32(*entries, at + 8), BigEndian::read32(*entries, at + 12)};
        if (slice.offset > fileSize || slice.size > fileSize - slice.offset)
            continue;
        if (auto data = entitlementsInSlice(device, slice))
            return data;
    }
    return std::nullopt;
}
} // namespace

std::optional<QByteArray> entitlementsData(QIODevice &device)
{
    if (!device.isOpen() || device.isSequential())
        return std::nullopt;
    const auto magic = readAt(device, 0, 4);
    if (!magic)
        return std::nullopt;
    const quint32 big = BigEndian::read32(*magic, 0);
    if (big == kFatMagic || big == kFatMagic64)
        return entitlementsInUniversal(device, big == kFatMagic64);
    return entitlementsInSlice(device, Slice{0, quint64(device.size())});
}

std::optional<QVariantMap> entitlements(const QString &executablePath)
{
    // A regular file only: opening a FIFO planted in a bundle would block.
    const int fd =
        SafeFile::openRegular(QFile::encodeName(executablePath), SafeFile::Links::follow);
    QFile file;
    if (fd < 0 || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        if (fd >= 0)
            ::close(fd);
        return std::nullopt;
    }
    const auto data = entitlementsData(file);
    if (!data) {
        qCDebug(lcPlatform) << "no entitlements read from" << executablePath
                            << "(unsigned, not Mach-O, or malformed)";
        return std::nullopt;
    }
    const auto value = PropertyList::parse(*data);
    if (!value || value->typeId() != QMetaType::QVariantMap) {
        qCDebug(lcPlatform) << "entitlements of" << executablePath << "refused: not a dictionary";
        return std::nullopt;
    }
    return value->toMap();
}

QStringList applicationGroups(const QString &executablePath)
{
    const auto dictionary = entitlements(executablePath);
    if (!dictionary)
        return {};
    const QVariant groups =
        dictionary->value(QStringLiteral("com.apple.security.application-groups"));
    if (groups.typeId() != QMetaType::QVariantList)
        return {};
    QStringList result;
    for (const QVariant &group : groups.toList()) {
        if (group.typeId() == QMetaType::QString)
            result.append(group.toString());
    }
    return result;
}

} // namespace MachOReader
