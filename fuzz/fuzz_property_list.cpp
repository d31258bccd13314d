// SPDX-License-Identifier: MIT
// Property lists come from every bundle and launchd job on the disk. Whatever the bytes, the
// reader returns a value or nothing; a value it returns must survive a round trip through
// both writers unchanged in shape.
#include "Platform/PropertyList.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto value = PropertyList::parse(bytes);
    if (!value)
        return 0;
    // What we read we can write again, and read back as the same kind of value.
    const auto again = PropertyList::parse(PropertyList::toBinary(*value));
    if (!again || again->typeId() != value->typeId())
        std::abort();
    return 0;
}
