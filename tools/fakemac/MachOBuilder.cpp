// SPDX-License-Identifier: MIT
#include "MachOBuilder.h"

#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QVariantList>
#include <QVariantMap>
#include <QtEndian>

namespace MachOBuilder {

namespace {
constexpr quint32 kCpuX86_64 = 0x01000007;
constexpr quint32 kCpuArm64 = 0x0100000c;

void putBig(QByteArray &bytes, quint32 value)
{
    char buffer[4];
    qToBigEndian(value, buffer);
    bytes.append(buffer, 4);
}

void putBig64(QByteArray &bytes, quint64 value)
{
    char buffer[8];
    qToBigEndian(value, buffer);
    bytes.append(buffer, 8);
}

void putLittle(QByteArray &bytes, quint32 value)
{
    char buffer[4];
    qToLittleEndian(value, buffer);
    bytes.append(buffer, 4);
}

QByteArray blob(quint32 magic, const QByteArray &payload)
{
    QByteArray bytes;
    putBig(bytes, magic);
    putBig(bytes, quint32(8 + payload.size()));
    return bytes + payload;
}

QByteArray slice(quint32 cpu, const QByteArray &signature, bool is64)
{
    const quint32 headerSize = is64 ? 32 : 28;
    const quint32 commandsSize = signature.isEmpty() ? 0 : 16;
    const quint32 signatureOffset = 4096; // page-aligned as linkers place it
    QByteArray bytes;
    putLittle(bytes, is64 ? 0xfeedfacf : 0xfeedface);
    putLittle(bytes, cpu);
    putLittle(bytes, 0);                           // cpusubtype
    putLittle(bytes, 2);                           // MH_EXECUTE
    putLittle(bytes, signature.isEmpty() ? 0 : 1); // ncmds
    putLittle(bytes, commandsSize);
    putLittle(bytes, 0); // flags
    if (is64)
        putLittle(bytes, 0); // reserved
    Q_ASSERT(quint32(bytes.size()) == headerSize);
    if (!signature.isEmpty()) {
        putLittle(bytes, 0x1d); // LC_CODE_SIGNATURE
        putLittle(bytes, 16);
        putLittle(bytes, signatureOffset);
        putLittle(bytes, quint32(signature.size()));
    }
    bytes.append(QByteArray(signatureOffset - bytes.size(), '\0'));
    return bytes + signature;
}
} // namespace

QByteArray entitlementsPlist(const QStringList &appGroups)
{
    QVariantList groups;
    for (const QString &group : appGroups)
        groups.append(group);
    return PropertyList::toXml(
        QVariantMap{{QStringLiteral("com.apple.security.app-sandbox"), true},
                    {QStringLiteral("com.apple.security.application-groups"), groups}});
}

QByteArray superBlob(const QByteArray &entitlements)
{
    const QByteArray directory = blob(0xfade0c02, QByteArray(32, '\0'));
    const QByteArray granted = blob(0xfade7171, entitlements);
    const quint32 headerSize = 12 + 2 * 8;
    QByteArray bytes;
    putBig(bytes, 0xfade0cc0);
    putBig(bytes, quint32(headerSize + directory.size() + granted.size()));
    putBig(bytes, 2);
    putBig(bytes, 0); // code directory slot
    putBig(bytes, headerSize);
    putBig(bytes, 5); // entitlements slot
    putBig(bytes, quint32(headerSize + directory.size()));
    return bytes + directory + granted;
}

QByteArray thin(const QByteArray &entitlements, bool is64)
{
    return slice(kCpuArm64, superBlob(entitlements), is64);
}

QByteArray unsignedThin()
{
    return slice(kCpuArm64, {}, true);
}

QByteArray universal(const QByteArray &entitlements, bool fat64)
{
    const QByteArray first = slice(kCpuX86_64, {}, true);
    const QByteArray second = thin(entitlements);
    const quint64 firstOffset = 4096;
    const quint64 secondOffset = firstOffset + ((quint64(first.size()) + 4095) / 4096) * 4096;
    QByteArray bytes;
    putBig(bytes, fat64 ? 0xcafebabf : 0xcafebabe);
    putBig(bytes, 2);
    const auto entry = [&](quint32 cpu, quint64 offset, quint64 size) {
        putBig(bytes, cpu);
        putBig(bytes, 0);
        if (fat64) {
            putBig64(bytes, offset);
            putBig64(bytes, size);
            putBig(bytes, 12);
            putBig(bytes, 0);
        } else {
            putBig(bytes, quint32(offset));
            putBig(bytes, quint32(size));
            putBig(bytes, 12);
        }
    };
    entry(kCpuX86_64, firstOffset, quint64(first.size()));
    entry(kCpuArm64, secondOffset, quint64(second.size()));
    bytes.append(QByteArray(qsizetype(firstOffset) - bytes.size(), '\0'));
    bytes += first;
    bytes.append(QByteArray(qsizetype(secondOffset) - bytes.size(), '\0'));
    return bytes + second;
}

QByteArray executable(const QStringList &appGroups, Layout layout)
{
    const QByteArray plist = entitlementsPlist(appGroups);
    switch (layout) {
    case Layout::thin64:
        return thin(plist);
    case Layout::thin32:
        return thin(plist, false);
    case Layout::universal:
        return universal(plist);
    case Layout::universal64:
        return universal(plist, true);
    }
    return {};
}

} // namespace MachOBuilder
