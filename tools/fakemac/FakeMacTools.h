// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <optional>

class FakeMac;

// The stand-ins for the system tools discovery asks, and the records they answer from:
// ROOT/.fakemac/package-files (package id, tab, Mac path of an installed file) for pkgutil and
// ROOT/.fakemac/spotlight (bundle identifier, tab, Mac path of the app) for mdfind.
namespace FakeMacTools {

struct Package
{
    QString id;                     // the receipt is ROOT/private/var/db/receipts/<id>.plist
    QStringList files;              // Mac paths the package installed, as pkgutil --file-info knows
    bool hasBillOfMaterials = true; // <id>.bom beside the receipt
    qint64 bomSize = 2048;
};

// ROOT/usr/sbin/pkgutil: "--file-info PATH" prints the packages that installed PATH (pkgid
// lines); "--forget ID" removes the receipt and its .bom, as the real tool does.
void installPkgutil(FakeMac &mac);
// ROOT/usr/bin/mdfind: answers the application-bundle identifier-prefix query with the
// indexed apps whose identifier starts with the prefix, case-insensitively, and that exist.
void installMdfind(FakeMac &mac);

// Lays out the receipt (and its bill of materials) and records the package's files.
void addPackage(FakeMac &mac, const Package &package);
// The "packages" of a JSON description: [{"id", "files": [...], "bom": true, "bomSize"}]; what
// is wrong with them, if anything.
[[nodiscard]] std::optional<QString> applyPackages(FakeMac &mac, const QJsonArray &packages);
// Makes an app known to the metadata index.
void indexApp(FakeMac &mac, const QString &identifier, const QString &macPath);

} // namespace FakeMacTools
