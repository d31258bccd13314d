// SPDX-License-Identifier: MIT
// Property lists come from every bundle and launchd job on the disk. Whatever the bytes, the
// reader returns a value or nothing; a value it returns must survive a round trip through
// both writers unchanged in shape.
#include "Platform/PropertyList.h"
#include "fakemac/PropertyListWriter.h"

#include <QByteArray>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto value = PropertyList::parse(bytes);
    if (!value)
        return 0;
    // What the writer accepts of it reads back as the same kind of value. The writer may refuse
    // what it cannot represent (a date at the very edge of the 32-bit range the reader clamps to).
    const QByteArray written = PropertyList::toBinary(*value);
    if (written.isEmpty())
        return 0;
    const auto again = PropertyList::parse(written);
    if (!again || again->typeId() != value->typeId()) {
        std::fprintf(stderr, "round trip changed %s into %s\n", value->typeName(),
                     again ? again->typeName() : "nothing");
        std::abort();
    }
    return 0;
}
