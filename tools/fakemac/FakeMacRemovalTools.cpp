// SPDX-License-Identifier: MIT
#include "FakeMacRemovalTools.h"

#include <QFile>
#include <QStandardPaths>

namespace {
// Loaded jobs are listed one per line in ROOT/.fakemac/launchd-loaded; unload and bootout take
// a job off the list.
const QByteArray kLaunchctl = R"SH(
loaded="$fakemac_root/.fakemac/launchd-loaded"
case "$1" in
unload) job="$2" ;;
bootout) job="$3" ;;
*) exit 0 ;;
esac
if [ -f "$loaded" ] && grep -Fqx -- "$job" "$loaded"; then
    grep -Fvx -- "$job" "$loaded" > "$loaded.new"; mv "$loaded.new" "$loaded"
    exit 0
fi
echo "Unload failed: 5: Input/output error" >&2
exit 5
)SH";
} // namespace

void FakeMacRemovalTools::install(FakeMac &mac)
{
    mac.addTool(QStringLiteral("/bin/launchctl"), kLaunchctl);
    mac.addTool(QStringLiteral("/usr/bin/defaults"), "exit 0\n");
    mac.addTool(QStringLiteral("/System/Library/Frameworks/CoreServices.framework/Frameworks/"
                               "LaunchServices.framework/Support/lsregister"),
                "exit 0\n");
}

void FakeMacRemovalTools::setLoadedJobs(FakeMac &mac, const QStringList &plistPaths)
{
    mac.addTextFile(QStringLiteral("/.fakemac/launchd-loaded"),
                    plistPaths.isEmpty() ? QByteArray()
                                         : (plistPaths.join(u'\n') + u'\n').toUtf8());
}

QString FakeMacRemovalTools::notLoadedMessage()
{
    return QStringLiteral("Unload failed: 5: Input/output error");
}

QString FakeMacRemovalTools::addRunnableApp(FakeMac &mac, const QString &bundleMacPath,
                                            const QString &identifier)
{
    const QString name = bundleMacPath.section(u'/', -1).section(QStringLiteral(".app"), 0, 0);
    FakeMac::App app;
    app.path = bundleMacPath;
    app.identifier = identifier;
    app.executable = name;
    mac.addApp(app);
    const QString executable = mac.path(bundleMacPath + QStringLiteral("/Contents/MacOS/") + name);
    QFile::remove(executable);
    if (!QFile::copy(QStandardPaths::findExecutable(QStringLiteral("sleep")), executable))
        qFatal("FakeMacRemovalTools: cannot copy sleep to %s", qPrintable(executable));
    QFile::setPermissions(executable, QFile::permissions(executable) | QFileDevice::ExeOwner |
                                          QFileDevice::ExeGroup | QFileDevice::ExeOther);
    return executable;
}
