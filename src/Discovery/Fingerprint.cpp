// SPDX-License-Identifier: MIT
#include "Fingerprint.h"

#include <algorithm>

QString Fingerprint::vendorDisplayName() const
{
    // Every word capitalised, as "my-corp" -> "My-Corp".
    QString text = vendor.isEmpty() ? QStringLiteral("vendor") : vendor.toLower();
    bool startOfWord = true;
    for (QChar &c : text) {
        if (startOfWord)
            c = c.toUpper();
        startOfWord = !c.isLetterOrNumber();
    }
    return text;
}

void Fingerprint::orderIdentifiers()
{
    QSet<QString> all = bundleIDs;
    all.unite(groupIDs).unite(packageIDs);
    identifiers = QStringList(all.cbegin(), all.cend());
    std::sort(identifiers.begin(), identifiers.end(), [](const QString &a, const QString &b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    });
}
