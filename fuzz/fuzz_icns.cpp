// SPDX-License-Identifier: MIT
// An app's icon file is read while its bundle is only being looked at. The reader must stay
// within the bytes, and what it returns must be one PNG entry taken whole from them.
#include "Platform/AppIcon.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto png = AppIcon::largestPngInIcns(bytes);
    if (!png)
        return 0;
    if (!png->startsWith("\x89PNG\r\n\x1a\n") || !bytes.contains(*png) ||
        png->size() + 16 > bytes.size())
        std::abort();
    return 0;
}
