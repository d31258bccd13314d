// SPDX-License-Identifier: MIT
// quenzo-fakemac DESCRIPTION.json ROOT: lays out a fake Mac from a JSON description.
#include "Platform/SystemLayout.h"
#include "fakemac/FakeMac.h"
#include "fakemac/FakeMacRemovalTools.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream err(stderr);
    if (arguments.size() != 3) {
        err << "usage: quenzo-fakemac DESCRIPTION.json ROOT\n";
        return 2;
    }
    QFile file(arguments.at(1));
    if (!file.open(QIODevice::ReadOnly)) {
        err << "quenzo-fakemac: cannot read " << arguments.at(1) << '\n';
        return 2;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject()) {
        err << "quenzo-fakemac: " << arguments.at(1) << ": " << parseError.errorString() << '\n';
        return 2;
    }
    const QJsonObject description = document.object();
    // Without a "user", the home is the one quenzo and quenzo-cli assume for --root alone.
    const QString loginUser = QFileInfo(SystemLayout::defaultHome(arguments.at(2))).fileName();
    FakeMac mac(arguments.at(2), description.value(QStringLiteral("user")).toString(loginUser));
    if (const auto wrong = mac.apply(description)) {
        err << "quenzo-fakemac: " << *wrong << '\n';
        return 2;
    }
    // launchctl, defaults and lsregister, so an uninstall runs against this Mac too.
    FakeMacRemovalTools::install(mac);
    QTextStream(stdout) << mac.home() << '\n';
    return 0;
}
