// SPDX-License-Identifier: MIT
// Launch agents and daemons are judged by their job description, written by whoever installed
// them: the bytes go through the property-list reader and then the launch-item rules, against
// a fake Mac that holds the app itself and one other app of its vendor.
#include "Discovery/Fingerprint.h"
#include "Discovery/MatchRules.h"
#include "Platform/PropertyList.h"
#include "Platform/SystemLayout.h"

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

namespace {

Fingerprint writerFingerprint(const QString &root)
{
    Fingerprint fingerprint;
    fingerprint.bundlePath = root + QStringLiteral("/Applications/Writer.app");
    fingerprint.mainBundleID = QStringLiteral("com.acme.writer");
    fingerprint.bundleIDs = {fingerprint.mainBundleID, QStringLiteral("com.acme.writer.helper")};
    fingerprint.groupIDs = {QStringLiteral("group.com.acme.writer")};
    fingerprint.packageIDs = {QStringLiteral("com.acme.writer.pkg")};
    fingerprint.names = {QStringLiteral("writer"), QStringLiteral("acmewriter")};
    fingerprint.executableNames = {QStringLiteral("writer")};
    fingerprint.crashReportNames = {QStringLiteral("writer")};
    fingerprint.vendor = QStringLiteral("acme");
    fingerprint.vendorPrefix = QStringLiteral("com.acme.");
    fingerprint.shortName = QStringLiteral("writer");
    fingerprint.otherAppIDs = {QStringLiteral("com.acme.sheets")};
    fingerprint.otherVendorAppNames = {QStringLiteral("Acme Sheets")};
    fingerprint.orderIdentifiers();
    return fingerprint;
}

struct Scene
{
    QTemporaryDir root;
    SystemLayout layout{root.path()};
    Fingerprint fingerprint;

    Scene()
    {
        QDir(root.path()).mkpath(QStringLiteral("Applications/Writer.app/Contents/MacOS"));
        QDir(root.path()).mkpath(QStringLiteral("Applications/Acme Sheets.app/Contents/MacOS"));
        QDir(root.path()).mkpath(QStringLiteral("Users/tester"));
        fingerprint = writerFingerprint(root.path());
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Scene scene;
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto value = PropertyList::parse(bytes);
    std::optional<QVariantMap> plist;
    if (value && value->typeId() == QMetaType::QVariantMap)
        plist = value->toMap();
    const QString name = QStringLiteral("com.example.job.plist");
    const auto match = MatchRules::matchLaunchItem(name, plist, scene.fingerprint, scene.layout);
    const bool other = MatchRules::startsOtherApp(plist, scene.fingerprint, scene.layout);
    const QStringList programs = MatchRules::programPaths(plist);
    // Without a description only the file name can be judged, and it names no app here.
    if (!plist && (match || other || !programs.isEmpty()))
        std::abort();
    return 0;
}
