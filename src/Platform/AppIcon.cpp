// SPDX-License-Identifier: MIT
#include "AppIcon.h"

#include "BigEndian.h"
#include "Bundle.h"
#include "LogCategories.h"
#include "SystemLayout.h"

#if defined(Q_OS_MACOS)
#include "mac/WorkspaceIcon.h"
#endif

#include "SafeFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

// The largest icns files in the wild hold a few megabytes of PNG entries.
constexpr qint64 kMaximumIcnsSize = 32 * 1024 * 1024;
constexpr qsizetype kHeaderSize = 8;
const QByteArray kPngSignature = QByteArrayLiteral("\x89PNG\r\n\x1a\n");

// Width times height from the IHDR chunk that must follow the PNG signature; nothing when the
// entry is not a PNG.
std::optional<quint64> pngArea(const QByteArray &entry)
{
    constexpr qsizetype kIhdrEnd = 8 + 4 + 4 + 4 + 4; // signature, length, type, width, height
    if (entry.size() < kIhdrEnd || !entry.startsWith(kPngSignature) || entry.mid(12, 4) != "IHDR")
        return std::nullopt;
    return quint64(BigEndian::read32(entry, 16)) * quint64(BigEndian::read32(entry, 20));
}

bool isLarger(const QByteArray &candidate, quint64 area, const QByteArray &best, quint64 bestArea)
{
    if (area != bestArea)
        return area > bestArea;
    return candidate.size() > best.size();
}

std::optional<QByteArray> readIcns(const QString &path)
{
    return SafeFile::read(path, kMaximumIcnsSize);
}

} // namespace

namespace AppIcon {

std::optional<QByteArray> largestPngInIcns(const QByteArray &icns)
{
    if (icns.size() < kHeaderSize || !icns.startsWith("icns"))
        return std::nullopt;
    const quint32 total = BigEndian::read32(icns, 4);
    if (total < quint32(kHeaderSize) || total > quint64(icns.size()))
        return std::nullopt;

    std::optional<QByteArray> best;
    quint64 bestArea = 0;
    qsizetype at = kHeaderSize;
    while (qsizetype(total) - at >= kHeaderSize) {
        const quint32 length = BigEndian::read32(icns, at + 4);
        if (length < quint32(kHeaderSize) || length > quint64(qsizetype(total) - at))
            break;
        const QByteArray entry = icns.mid(at + kHeaderSize, qsizetype(length) - kHeaderSize);
        if (const auto area = pngArea(entry);
            area && (!best || isLarger(entry, *area, *best, bestArea))) {
            best = entry;
            bestArea = *area;
        }
        at += qsizetype(length);
    }
    return best;
}

std::optional<QByteArray> fromIcnsResource(const QString &bundlePath)
{
    const auto bundle = Bundle::open(bundlePath);
    if (!bundle)
        return std::nullopt;
    auto name = bundle->stringValue(QStringLiteral("CFBundleIconFile"));
    // The name comes from the bundle: it must stay a file inside Contents/Resources.
    if (!name || name->isEmpty() || name->contains(QLatin1Char('/')) ||
        *name == QLatin1String("..") || *name == QLatin1String(".")) {
        qCDebug(lcPlatform) << "no usable CFBundleIconFile in" << bundlePath;
        return std::nullopt;
    }
    if (QFileInfo(*name).suffix().isEmpty())
        name->append(QStringLiteral(".icns"));
    const auto bytes = readIcns(bundlePath + QStringLiteral("/Contents/Resources/") + *name);
    auto png = bytes ? largestPngInIcns(*bytes) : std::nullopt;
    if (!png)
        qCDebug(lcPlatform) << "icon" << *name << "of" << bundlePath
                            << "refused: unreadable, too large or without a PNG";
    return png;
}

std::optional<QByteArray> extract([[maybe_unused]] const SystemLayout &layout,
                                  const QString &bundlePath)
{
#if defined(Q_OS_MACOS)
    // The system also knows icons that live in asset catalogs or were set in the Finder.
    if (layout.usesNativeFileServices()) {
        if (auto icon = WorkspaceIcon::pngForFile(bundlePath))
            return icon;
    }
#endif
    return fromIcnsResource(bundlePath);
}

} // namespace AppIcon
