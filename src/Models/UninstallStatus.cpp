// SPDX-License-Identifier: MIT
#include "UninstallStatus.h"

#include <QMetaEnum>

QString UninstallStatus::caseName() const
{
    return QString::fromLatin1(QMetaEnum::fromType<Kind>().valueToKey(static_cast<int>(m_kind)));
}
