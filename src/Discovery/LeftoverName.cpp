// SPDX-License-Identifier: MIT
#include "LeftoverName.h"

#include "Discovery/IdentifierText.h"

#include <QRegularExpression>

using namespace IdentifierText;

namespace {
// File-type endings that say nothing about the owner: preferences, saved state, cookies,
// recent-document lists, logs.
QString withoutFileType(const QString &name)
{
    static const QRegularExpression fileType(
        QStringLiteral("\\.(plist|savedstate|binarycookies|sfl\\w*|log|bom)$"),
        QRegularExpression::CaseInsensitiveOption);
    QString result = name;
    result.remove(fileType);
    return result;
}

// Reverse-DNS: a letters-only top-level part and at least two more, no blanks; or a common
// top-level domain and one name ("com.vscodium"), where the app is its own vendor.
bool isIdentifierShaped(const QString &text)
{
    static const QRegularExpression shape(
        QStringLiteral("^[a-z]{2,12}(\\.[a-z0-9_-]+){2,}$|"
                       "^(com|org|net|io|dev|app|co|me|ai|fyi|im|cc|de|fr|ch|at|pl)\\."
                       "[a-z][a-z0-9_-]{3,}$"),
        QRegularExpression::CaseInsensitiveOption);
    return shape.match(text).hasMatch();
}

// Parts a vendor ships beside its apps; an identifier ending in one names no app by itself.
bool isVendorPartWord(const QString &key)
{
    static const QStringList words{
        QStringLiteral("helper"),       QStringLiteral("agent"),         QStringLiteral("updater"),
        QStringLiteral("update"),       QStringLiteral("installer"),     QStringLiteral("launcher"),
        QStringLiteral("bootstrapper"), QStringLiteral("crashreporter"), QStringLiteral("shipit"),
        QStringLiteral("service"),      QStringLiteral("daemon")};
    return std::any_of(words.cbegin(), words.cend(), [&](const QString &word) {
        return key.startsWith(word) || key.endsWith(word);
    });
}

bool isNameLike(const QString &text)
{
    return text.size() >= 3 && text.at(0).isLetter() && !genericNames().contains(text.toLower());
}

QStringList splitWords(const QString &name)
{
    QStringList words;
    QString current;
    const auto flush = [&] {
        if (!current.isEmpty())
            words.append(current.toLower());
        current.clear();
    };
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        if (!c.isLetterOrNumber()) {
            flush();
            continue;
        }
        if (!current.isEmpty()) {
            const QChar previous = current.back();
            const bool caseTurn = previous.isLower() && c.isUpper();
            const bool digitTurn = previous.isDigit() != c.isDigit();
            if (caseTurn || digitTurn)
                flush();
        }
        current.append(c);
    }
    flush();
    return words;
}
} // namespace

LeftoverName LeftoverName::parse(const QString &name)
{
    LeftoverName result;
    QString bare = withoutFileType(name);
    while (bare.startsWith(QLatin1Char('.')))
        bare.remove(0, 1);
    QString id = removingTeamPrefix(bare);
    if (id.startsWith(QLatin1String("group."), Qt::CaseInsensitive))
        id = id.mid(6);
    if (isIdentifierShaped(id)) {
        const QStringList parts = id.split(QLatin1Char('.'));
        result.identifier = id.toLower();
        result.family = parts.mid(0, 3).join(QLatin1Char('.')).toLower();
        result.appPart = parts.value(2, parts.at(1));
        const QString vendor = parts.at(1).toLower();
        if (vendor.size() >= 3 && !sharedNamespaces().contains(vendor))
            result.vendor = vendor;
        return result;
    }
    result.words = splitWords(id);
    return result;
}

bool LeftoverName::isVendorWide() const
{
    const QString key = nameKey(appPart);
    const QString last = nameKey(identifier.section(QLatin1Char('.'), -1));
    return isIdentifier() && isNameLike(appPart) &&
           (isVendorPartWord(key) || isVendorPartWord(last));
}

QString LeftoverName::appWord() const
{
    return LeftoverName::parse(appPart).words.value(0);
}

QString LeftoverName::appName() const
{
    // "writer" reads as a word; an app's name starts with a capital.
    if (isNameLike(appPart) && appPart != appPart.toLower())
        return appPart;
    if (isNameLike(appPart) || vendor.isEmpty())
        return appPart.left(1).toUpper() + appPart.mid(1);
    return vendor.left(1).toUpper() + vendor.mid(1);
}

QString LeftoverName::nameKey(const QString &displayName)
{
    return splitWords(displayName).join(QString());
}

QStringList LeftoverName::leadingWords(qsizetype minimumSize) const
{
    QStringList texts;
    QString joined;
    for (const QString &word : words) {
        joined += word;
        if (joined.size() >= minimumSize)
            texts.append(joined);
    }
    return texts;
}

bool LeftoverName::startsWithAny(const QSet<QString> &names) const
{
    const QStringList texts = leadingWords(3);
    return std::any_of(texts.cbegin(), texts.cend(),
                       [&](const QString &text) { return names.contains(text); });
}
