// SPDX-License-Identifier: MIT
// The privileged helper reads its batch as root from a process the user's own programs can
// reach. The parser must stay within the bytes and never allocate past them; whatever it
// accepts must be made of known words with their exact number of fields, and encode back to the
// very same bytes (so no two readings of one batch exist).
#include "Platform/HelperBatch.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const bool commands : {true, false}) {
        const auto records =
            commands ? HelperBatch::parseCommands(bytes) : HelperBatch::parseResults(bytes);
        if (!records)
            continue;
        for (const HelperRecord &record : *records) {
            const int arity = commands ? HelperBatch::commandArity(record.word)
                                       : HelperBatch::resultArity(record.word);
            if (arity != record.fields.size())
                std::abort();
        }
        if (HelperBatch::encode(*records) != bytes)
            std::abort();
    }
    return 0;
}
