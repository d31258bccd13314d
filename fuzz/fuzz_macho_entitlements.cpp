// SPDX-License-Identifier: MIT
// An executable's code signature is read to learn its app groups: thin and universal Mach-O
// files, every offset and length taken from the file. The entitlements found are bytes of the
// file and go on to the property-list reader, as discovery does.
#include "Platform/MachOReader.h"
#include "Platform/PropertyList.h"

#include <QBuffer>
#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    const auto entitlements = MachOReader::entitlementsData(device);
    if (!entitlements)
        return 0;
    if (quint64(entitlements->size()) > MachOReader::kMaximumEntitlementsBytes ||
        !bytes.contains(*entitlements))
        std::abort();
    (void)PropertyList::parse(*entitlements);
    return 0;
}
