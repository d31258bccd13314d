// SPDX-License-Identifier: MIT
#include "LongNames.h"

#include "fakemac/FakeMac.h"

namespace LongNames {

QString name255(const QString &prefix)
{
    QString name = prefix + QString(100, u'ä');
    while (name.toUtf8().size() < 255)
        name.append(u'x');
    return name;
}

QString deepBelow(const FakeMac &mac, const QString &macPath, qsizetype bytes)
{
    QString deep = macPath;
    while (mac.path(deep).toUtf8().size() < bytes)
        deep += u'/' + QString(50, u'd');
    return deep;
}

} // namespace LongNames
