// SPDX-License-Identifier: MIT
#include "FileItem.h"

#include "ByteCountFormatter.h"

QString FileItem::displayPath() const
{
    return shownPath.isEmpty() ? path : shownPath;
}

QString FileItem::formattedSize() const
{
    return formattedByteCount(size);
}
