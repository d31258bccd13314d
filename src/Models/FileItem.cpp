// SPDX-License-Identifier: MIT
#include "FileItem.h"

#include "ByteCountFormatter.h"
#include "Platform/SystemLayout.h"

QString FileItem::displayPath() const
{
    return SystemLayout::displayPath(path);
}

QString FileItem::formattedSize() const
{
    return formattedByteCount(size);
}
