// SPDX-License-Identifier: MIT
#include "FakeMac.h"

#include "FakeMacTools.h"
#include "MachOBuilder.h"
#include "TreeFingerprint.h"

#include "Platform/PropertyList.h"
#include "Platform/SystemLayout.h"
#include "fakemac/PropertyListWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace {
// A 1 x 1 PNG, enough for an icon entry.
const QByteArray kTinyPng =
    QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+"
                           "M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");

void ensureParent(const QString &path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    ensureParent(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("FakeMac: cannot write %s", qPrintable(path));
    file.write(bytes);
}

QByteArray bigEndian32(quint32 value)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 4; ++i)
        bytes[3 - i] = char((value >> (8 * i)) & 0xff);
    return bytes;
}

QByteArray icnsWithPng(const QByteArray &png)
{
    const QByteArray entry = QByteArray("ic07") + bigEndian32(quint32(8 + png.size())) + png;
    return QByteArray("icns") + bigEndian32(quint32(8 + entry.size())) + entry;
}

FakeMac::PlistFormat formatNamed(const QString &name)
{
    return name == QLatin1String("binary") ? FakeMac::PlistFormat::binary
                                           : FakeMac::PlistFormat::xml;
}
} // namespace

FakeMac::FakeMac(const QString &root, const QString &user)
    : m_root(QDir::cleanPath(QDir(root).absolutePath())),
      m_home(m_root + QStringLiteral("/Users/") + user)
{
    for (const char *folder :
         {"/Applications", "/Library/Application Support", "/Library/Caches",
          "/Library/LaunchAgents", "/Library/LaunchDaemons", "/Library/Preferences",
          "/private/var/db/receipts", "/System/Applications", "~/Library/Application Support",
          "~/Library/Caches", "~/Library/Preferences", "~/.Trash"})
        addFolder(QString::fromLatin1(folder));
    FakeMacTools::installPkgutil(*this);
    FakeMacTools::installMdfind(*this);
}

QString FakeMac::path(const QString &macPath) const
{
    if (macPath == QLatin1String("~"))
        return m_home;
    if (macPath.startsWith(QLatin1String("~/")))
        return m_home + macPath.mid(1);
    return m_root + macPath;
}

QString FakeMac::trash(const QString &name) const
{
    return m_home + QStringLiteral("/.Trash/") + name;
}

QString FakeMac::deepBelow(const QString &macPath, qsizetype bytes) const
{
    QString deep = macPath;
    while (path(deep).toUtf8().size() < bytes)
        deep += u'/' + QString(50, u'd');
    return deep;
}

QString FakeMac::longestName(const QString &prefix)
{
    QString name = prefix + QString(100, u'ä');
    while (name.toUtf8().size() < 255)
        name.append(u'x');
    return name;
}

QStringList FakeMac::entries() const
{
    QStringList result = TreeFingerprint::entries(m_root);
    result.removeIf([](const QString &entry) { return entry.startsWith(u".fakemac"); });
    return result;
}

SystemLayout FakeMac::layout() const
{
    return SystemLayout(m_root, m_home);
}

QString FakeMac::addApp(const App &app)
{
    const QString bundle = addFolder(app.path);
    QVariantMap info = app.info;
    if (!app.identifier.isEmpty())
        info.insert(QStringLiteral("CFBundleIdentifier"), app.identifier);
    if (app.version.isValid())
        info.insert(QStringLiteral("CFBundleShortVersionString"), app.version);
    if (!app.executable.isEmpty()) {
        info.insert(QStringLiteral("CFBundleExecutable"), app.executable);
        const QString executable = app.path + QStringLiteral("/Contents/MacOS/") + app.executable;
        if (app.appGroups.isEmpty())
            addTextFile(executable, "#!/bin/sh\nexit 0\n");
        else
            addTextFile(executable,
                        MachOBuilder::executable(app.appGroups,
                                                 app.universal ? MachOBuilder::Layout::universal
                                                               : MachOBuilder::Layout::thin64));
    }
    if (app.indexed && !app.identifier.isEmpty())
        FakeMacTools::indexApp(*this, app.identifier, app.path);
    if (app.icon) {
        info.insert(QStringLiteral("CFBundleIconFile"), QStringLiteral("AppIcon"));
        writeBytes(bundle + QStringLiteral("/Contents/Resources/AppIcon.icns"),
                   icnsWithPng(kTinyPng));
    }
    addPlist(app.path + QStringLiteral("/Contents/Info.plist"), info, app.format);
    return bundle;
}

QString FakeMac::addFolder(const QString &macPath)
{
    const QString real = path(macPath);
    QDir().mkpath(real);
    return real;
}

QString FakeMac::addFile(const QString &macPath, qint64 size)
{
    const QString real = path(macPath);
    writeBytes(real, {});
    QFile(real).resize(size); // sparse: sizes are what the tests look at, not the bytes
    return real;
}

QString FakeMac::addTextFile(const QString &macPath, const QByteArray &content)
{
    const QString real = path(macPath);
    writeBytes(real, content);
    return real;
}

QString FakeMac::addSymlink(const QString &macPath, const QString &target)
{
    const QString real = path(macPath);
    ensureParent(real);
    QFile::remove(real);
    QFile::link(target, real);
    return real;
}

QString FakeMac::addPlist(const QString &macPath, const QVariant &content, PlistFormat format)
{
    return addTextFile(macPath, format == PlistFormat::binary ? PropertyList::toBinary(content)
                                                              : PropertyList::toXml(content));
}

void FakeMac::setDarwinUserDirectories(const QString &cacheMacPath, const QString &tempMacPath)
{
    const QString cache = addFolder(cacheMacPath);
    const QString temp = addFolder(tempMacPath);
    addTextFile(QStringLiteral("/.fakemac/darwin-user-dirs"),
                (cache + QStringLiteral("/\n") + temp + QStringLiteral("/\n")).toUtf8());
}

QByteArray FakeMac::callRecorder()
{
    // Each word is JSON-escaped with sed (backslash, quote, tab, newline) so any file name
    // survives; the fake root is the part of $0 before /usr, /bin or /System.
    return R"SH(
fakemac_root=${0%/usr/*}; fakemac_root=${fakemac_root%/bin/*}; fakemac_root=${fakemac_root%/System/*}
fakemac_json() { printf '%s' "$1" | sed -e 's/\\/\\\\/g' -e 's/"/\\"/g' -e 's/\t/\\t/g' | awk 'NR > 1 { printf "\\n" } { printf "%s", $0 }'; }
fakemac_line="[\"$(fakemac_json "${0#"$fakemac_root"}")\""
for fakemac_word in "$@"; do fakemac_line="$fakemac_line,\"$(fakemac_json "$fakemac_word")\""; done
mkdir -p "$fakemac_root/.fakemac" && printf '%s]\n' "$fakemac_line" >> "$fakemac_root/.fakemac/calls.log"
)SH";
}

QList<QStringList> FakeMac::calls() const
{
    QList<QStringList> result;
    QFile file(m_root + QStringLiteral("/.fakemac/calls.log"));
    if (!file.open(QIODevice::ReadOnly))
        return result;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.isEmpty())
            continue;
        QStringList words;
        for (const QJsonValue &word : QJsonDocument::fromJson(line).array())
            words.append(word.toString());
        result.append(words);
    }
    return result;
}

QString FakeMac::addTool(const QString &macPath, const QByteArray &script)
{
    const QString real = addTextFile(macPath, QByteArray("#!/bin/sh\n") + callRecorder() + script);
    QFile::setPermissions(real, QFile::permissions(real) | QFileDevice::ExeOwner |
                                    QFileDevice::ExeGroup | QFileDevice::ExeOther);
    return real;
}

std::optional<QString> FakeMac::apply(const QJsonObject &description)
{
    for (const QJsonValue &value : description.value(QStringLiteral("apps")).toArray()) {
        const QJsonObject entry = value.toObject();
        App app;
        app.path = entry.value(QStringLiteral("path")).toString();
        if (!app.path.startsWith(QLatin1Char('/')))
            return QStringLiteral("an app needs an absolute \"path\"");
        app.identifier = entry.value(QStringLiteral("identifier")).toString();
        app.version = entry.value(QStringLiteral("version")).toVariant();
        app.executable = entry.value(QStringLiteral("executable")).toString();
        app.info = entry.value(QStringLiteral("info")).toObject().toVariantMap();
        app.format = formatNamed(entry.value(QStringLiteral("plist")).toString());
        app.icon = entry.value(QStringLiteral("icon")).toBool();
        app.appGroups = entry.value(QStringLiteral("appGroups")).toVariant().toStringList();
        app.universal = entry.value(QStringLiteral("universal")).toBool();
        app.indexed = entry.value(QStringLiteral("spotlight")).toBool(true);
        addApp(app);
    }
    for (const QJsonValue &value : description.value(QStringLiteral("files")).toArray()) {
        const QJsonObject entry = value.toObject();
        const QString macPath = entry.value(QStringLiteral("path")).toString();
        if (macPath.isEmpty())
            return QStringLiteral("a file needs a \"path\"");
        if (entry.contains(QStringLiteral("link")))
            addSymlink(macPath, entry.value(QStringLiteral("link")).toString());
        else if (entry.value(QStringLiteral("folder")).toBool())
            addFolder(macPath);
        else if (entry.contains(QStringLiteral("text")))
            addTextFile(macPath, entry.value(QStringLiteral("text")).toString().toUtf8());
        else if (entry.contains(QStringLiteral("plist")))
            addPlist(macPath, entry.value(QStringLiteral("plist")).toVariant(),
                     formatNamed(entry.value(QStringLiteral("format")).toString()));
        else
            addFile(macPath, entry.value(QStringLiteral("size")).toInteger());
    }
    const QJsonArray userDirs =
        description.value(QStringLiteral("darwinUserDirectories")).toArray();
    if (userDirs.size() == 2)
        setDarwinUserDirectories(userDirs.at(0).toString(), userDirs.at(1).toString());
    return FakeMacTools::applyPackages(*this,
                                       description.value(QStringLiteral("packages")).toArray());
}
