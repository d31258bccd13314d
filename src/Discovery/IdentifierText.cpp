// SPDX-License-Identifier: MIT
#include "IdentifierText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace IdentifierText {

const QSet<QString> &genericNames()
{
    static const QSet<QString> names{
        u"app"_s,      u"apps"_s,       u"application"_s, u"applications"_s, u"helper"_s,
        u"helpers"_s,  u"updater"_s,    u"update"_s,      u"agent"_s,        u"daemon"_s,
        u"service"_s,  u"services"_s,   u"data"_s,        u"cache"_s,        u"caches"_s,
        u"logs"_s,     u"log"_s,        u"library"_s,     u"support"_s,      u"preferences"_s,
        u"settings"_s, u"shared"_s,     u"default"_s,     u"temp"_s,         u"tmp"_s,
        u"plugins"_s,  u"extensions"_s, u"framework"_s,   u"frameworks"_s,   u"resources"_s,
        u"apple"_s};
    return names;
}

const QSet<QString> &sharedNamespaces()
{
    static const QSet<QString> names{
        u"apple"_s,      u"github"_s,      u"gitlab"_s,     u"bitbucket"_s, u"sourceforge"_s,
        u"googlecode"_s, u"electron"_s,    u"electronjs"_s, u"example"_s,   u"company"_s,
        u"mycompany"_s,  u"yourcompany"_s, u"developer"_s};
    return names;
}

namespace {
bool isSkipped(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('-') || c == QLatin1Char('_');
}

Continuation boundary(const QString &text, qsizetype at)
{
    if (at == text.size())
        return Continuation::exact;
    const QChar c = text.at(at);
    if (isSkipped(c) || c == QLatin1Char('.') || c == QLatin1Char('('))
        return Continuation::separated;
    if (c.isDigit())
        return Continuation::version;
    if (c.isUpper() && at > 0 && text.at(at - 1).isLower())
        return Continuation::camel;
    return Continuation::none;
}

// Words an app's name often ends with that say what kind of program it is, not which.
bool isTrailingKindWord(const QString &word)
{
    static const QSet<QString> words{u"desktop"_s, u"client"_s, u"app"_s,  u"helper"_s,
                                     u"for mac"_s, u"mac"_s,    u"macos"_s};
    return words.contains(word);
}

bool isVersionWord(const QString &word)
{
    if (word.size() == 1 && word.at(0).isLetter())
        return true; // "CleanShot X"
    return !word.isEmpty() && std::all_of(word.cbegin(), word.cend(), [](QChar c) {
        return c.isDigit() || c == QLatin1Char('.');
    });
}
} // namespace

Continuation nameContinuation(const QString &text, const QString &key)
{
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < text.size() && j < key.size()) {
        const QChar c = text.at(i);
        if (isSkipped(c) && j > 0) {
            ++i;
            continue;
        }
        if (c.toLower() != key.at(j))
            return Continuation::none;
        ++i;
        ++j;
    }
    return j == key.size() && !key.isEmpty() ? boundary(text, i) : Continuation::none;
}

Continuation identifierContinuation(const QString &text, const QString &id)
{
    if (id.isEmpty() || text.size() < id.size() ||
        QStringView(text).left(id.size()).compare(id, Qt::CaseInsensitive) != 0)
        return Continuation::none;
    return boundary(text, id.size());
}

bool isTooBroadForPrefix(const QString &id)
{
    return id.count(QLatin1Char('.')) < 2;
}

bool isSystemFolderName(const QString &name)
{
    static const QSet<QString> names{u"byhost"_s,
                                     u"diagnosticreports"_s,
                                     u"retired"_s,
                                     u"addressbook"_s,
                                     u"crashreporter"_s,
                                     u"clouddocs"_s,
                                     u"fileprovider"_s,
                                     u"mobilesync"_s,
                                     u"syncedpreferences"_s,
                                     u"applicationsupport"_s,
                                     u"caches"_s,
                                     u"containers"_s,
                                     u"groupcontainers"_s,
                                     u"applicationscripts"_s,
                                     u"preferences"_s,
                                     u"logs"_s,
                                     u"launchagents"_s,
                                     u"launchdaemons"_s,
                                     u"cookies"_s,
                                     u"webkit"_s,
                                     u"httpstorages"_s,
                                     u"savedapplicationstate"_s,
                                     u"keychains"_s,
                                     u"mail"_s,
                                     u"messages"_s,
                                     u"safari"_s,
                                     u"calendars"_s,
                                     u"mobiledocuments"_s,
                                     u"fonts"_s,
                                     u"sounds"_s,
                                     u"accounts"_s,
                                     u"sharing"_s,
                                     u"metadata"_s,
                                     u"internetplugins"_s,
                                     u"preferencepanes"_s,
                                     u"services"_s,
                                     u"screensavers"_s,
                                     u"privilegedhelpertools"_s,
                                     u"receipts"_s,
                                     u"addressbookplugins"_s,
                                     u"homekit"_s,
                                     u"photos"_s,
                                     u"music"_s,
                                     u"movies"_s,
                                     u"pictures"_s,
                                     u"documents"_s,
                                     u"desktop"_s,
                                     u"downloads"_s,
                                     u"public"_s,
                                     u"shared"_s,
                                     u"library"_s,
                                     u"applications"_s,
                                     u"spelling"_s,
                                     u"keyboardlayouts"_s,
                                     u"inputmethods"_s,
                                     u"colorpickers"_s,
                                     u"favorites"_s,
                                     u"frameworks"_s,
                                     u"developer"_s,
                                     u"autosaveinformation"_s};
    return names.contains(normalizedName(name));
}

bool isNameWorthy(const QString &normalized)
{
    return normalized.size() >= 3 && !genericNames().contains(normalized);
}

QStringList shortenedNames(const QString &name, const QString &vendor)
{
    const QStringList words = name.toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QList<QStringList> variants{words};
    if (words.size() >= 2 && !vendor.isEmpty() && normalizedName(words.first()) == vendor)
        variants.append(words.mid(1));
    QStringList result;
    for (const QStringList &variant : std::as_const(variants)) {
        QList<QStringList> shorter{variant};
        if (variant.size() >= 3 && variant.at(variant.size() - 2) == u"for"_s)
            shorter.append(variant.mid(0, variant.size() - 2));
        else if (variant.size() >= 2 &&
                 (isVersionWord(variant.last()) || isTrailingKindWord(variant.last())))
            shorter.append(variant.mid(0, variant.size() - 1));
        for (const QStringList &kept : std::as_const(shorter)) {
            const QString joined = normalizedName(kept.join(QString()));
            if (kept.size() < words.size() && joined.size() >= 4 && isNameWorthy(joined) &&
                !result.contains(joined))
                result.append(joined);
        }
    }
    return result;
}

QString normalizedName(const QString &s)
{
    QString result = s.toLower();
    result.remove(QLatin1Char(' ')).remove(QLatin1Char('-')).remove(QLatin1Char('_'));
    return result;
}

QString removingTeamPrefix(const QString &s)
{
    const qsizetype dot = s.indexOf(QLatin1Char('.'));
    if (dot != 10 || dot + 1 >= s.size())
        return s;
    for (qsizetype i = 0; i < dot; ++i) {
        if (!s.at(i).isLetterOrNumber())
            return s;
    }
    return s.mid(dot + 1);
}

bool isUsableIdentifier(const QString &s)
{
    return s.size() >= 5 && s.contains(QLatin1Char('.')) && !s.startsWith(QLatin1Char('.')) &&
           !s.endsWith(QLatin1Char('.'));
}

bool hasIdentifierPrefix(const QString &s, const QString &id)
{
    if (!s.startsWith(id))
        return false;
    if (s.size() == id.size())
        return true;
    const QChar next = s.at(id.size());
    return next == QLatin1Char('.') || next == QLatin1Char('_') || next == QLatin1Char('-') ||
           next == QLatin1Char(' ');
}

bool isSameVendor(const QString &id, const QString &mainID, const QString &vendorPrefix)
{
    return hasIdentifierPrefix(id, mainID) ||
           (!vendorPrefix.isEmpty() && id.startsWith(vendorPrefix));
}

QString stem(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? name.left(dot) : name;
}

} // namespace IdentifierText
