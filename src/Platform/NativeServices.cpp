// SPDX-License-Identifier: MIT
#include "NativeServices.h"

#include "SystemLayout.h"

bool NativeServices::serveFiles()
{
    return available() && !SystemLayout::isFakeRoot();
}
