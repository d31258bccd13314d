// SPDX-License-Identifier: MIT
#include "FakeMacTools.h"

#include "FakeMac.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QVariantMap>

namespace FakeMacTools {

namespace {
void appendLine(const QString &path, const QString &line)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        qFatal("FakeMacTools: cannot write %s", qPrintable(path));
    file.write(line.toUtf8() + '\n');
}

const char *const kPkgutil = R"SH(
root=${0%/usr/sbin/pkgutil}
files="$root/.fakemac/package-files"
receipts="$root/private/var/db/receipts"
case "$1" in
--file-info)
    [ -n "$2" ] || { echo "usage: pkgutil --file-info PATH" >&2; exit 1; }
    printf 'volume: /\npath: %s\n' "$2"
    [ -f "$files" ] && FILE="$2" awk -F '\t' '$2 == ENVIRON["FILE"] {
        printf "\npkgid: %s\npkg-version: 1.0\ninstall-time: 1700000000\n", $1 }' "$files"
    exit 0 ;;
--forget)
    if [ ! -f "$receipts/$2.plist" ]; then
        printf "No receipt for '%s' found at '/'.\n" "$2" >&2
        exit 1
    fi
    rm -f "$receipts/$2.plist" "$receipts/$2.bom"
    if [ -f "$files" ]; then
        ID="$2" awk -F '\t' '$1 != ENVIRON["ID"]' "$files" > "$files.new" && mv "$files.new" "$files"
    fi
    printf "Forgot package '%s' on '/'.\n" "$2"
    exit 0 ;;
esac
echo "pkgutil: this stand-in knows --file-info and --forget" >&2
exit 1
)SH";

const char *const kMdfind = R"SH(
root=${0%/usr/bin/mdfind}
index="$root/.fakemac/spotlight"
case "$1" in
"kMDItemContentType == 'com.apple.application-bundle' && kMDItemCFBundleIdentifier == '"*"*'c") ;;
*) exit 0 ;;
esac
prefix=${1#*kMDItemCFBundleIdentifier == \'}
prefix=${prefix%\*\'c}
[ -f "$index" ] || exit 0
PREFIX="$prefix" awk -F '\t' 'index(tolower($1), tolower(ENVIRON["PREFIX"])) == 1 { print $2 }' "$index" |
while IFS= read -r app; do
    [ -e "$root$app" ] && printf '%s\n' "$app"
done
exit 0
)SH";
} // namespace

void installPkgutil(FakeMac &mac)
{
    mac.addTool(QStringLiteral("/usr/sbin/pkgutil"), kPkgutil);
}

void installMdfind(FakeMac &mac)
{
    mac.addTool(QStringLiteral("/usr/bin/mdfind"), kMdfind);
}

void addPackage(FakeMac &mac, const Package &package)
{
    const QString receipts = QStringLiteral("/private/var/db/receipts/") + package.id;
    mac.addPlist(receipts + QStringLiteral(".plist"),
                 QVariantMap{{QStringLiteral("PackageIdentifier"), package.id},
                             {QStringLiteral("PackageVersion"), QStringLiteral("1.0")},
                             {QStringLiteral("InstallPrefixPath"), QStringLiteral("/")}});
    if (package.hasBillOfMaterials)
        mac.addFile(receipts + QStringLiteral(".bom"), package.bomSize);
    for (const QString &file : package.files)
        appendLine(mac.path(QStringLiteral("/.fakemac/package-files")),
                   package.id + QLatin1Char('\t') + file);
}

std::optional<QString> applyPackages(FakeMac &mac, const QJsonArray &packages)
{
    for (const QJsonValue &value : packages) {
        const QJsonObject entry = value.toObject();
        Package package;
        package.id = entry.value(QStringLiteral("id")).toString();
        if (package.id.isEmpty())
            return QStringLiteral("a package needs an \"id\"");
        package.files = entry.value(QStringLiteral("files")).toVariant().toStringList();
        package.hasBillOfMaterials = entry.value(QStringLiteral("bom")).toBool(true);
        package.bomSize = entry.value(QStringLiteral("bomSize")).toInteger(package.bomSize);
        addPackage(mac, package);
    }
    return std::nullopt;
}

void indexApp(FakeMac &mac, const QString &identifier, const QString &macPath)
{
    // The index holds Mac paths as the real tool prints them: "~" is the home's Mac path.
    const QString homeMacPath = mac.home().mid(mac.root().size());
    const QString indexed =
        macPath.startsWith(QLatin1Char('~')) ? homeMacPath + macPath.mid(1) : macPath;
    appendLine(mac.path(QStringLiteral("/.fakemac/spotlight")),
               identifier + QLatin1Char('\t') + indexed);
}

} // namespace FakeMacTools
