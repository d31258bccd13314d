// SPDX-License-Identifier: MIT
// quenzo-fakemac DESCRIPTION.json ROOT: lays out a fake Mac from a JSON description.
#include "support/FakeMac.h"

#include <QCoreApplication>
#include <QFile>
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
    FakeMac mac(arguments.at(2),
                description.value(QStringLiteral("user")).toString(QStringLiteral("tester")));
    QString error;
    if (!mac.apply(description, &error)) {
        err << "quenzo-fakemac: " << error << '\n';
        return 2;
    }
    QTextStream(stdout) << mac.home() << '\n';
    return 0;
}
