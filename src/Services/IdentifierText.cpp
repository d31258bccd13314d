// SPDX-License-Identifier: MIT
#include "IdentifierText.h"

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
