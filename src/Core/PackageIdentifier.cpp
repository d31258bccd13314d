// SPDX-License-Identifier: MIT
#include "PackageIdentifier.h"

#include <QList>

namespace {

bool isAlphanumeric(char32_t c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

} // namespace

bool PackageIdentifier::isValid(const QString &id)
{
    // Operating-system receipts are never forgotten, whatever the case of the prefix.
    if (id.startsWith(QLatin1String("com.apple.pkg."), Qt::CaseInsensitive))
        return false;
    if (id.isEmpty() || !id.isValidUtf16())
        return false;
    const QList<uint> codePoints = id.toUcs4();
    if (!isAlphanumeric(char32_t(codePoints.first())))
        return false;
    for (const uint c : codePoints) {
        if (!isAlphanumeric(char32_t(c)) && c != u'.' && c != u'_' && c != u'-')
            return false;
    }
    return true;
}
