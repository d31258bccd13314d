// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHashFunctions>
#include <QString>
#include <QUuid>
#include <optional>

// One dropped application. A value: copied on assignment, equal field by field.
struct AppInfo
{
    QUuid id = QUuid::createUuid();
    QString name;             // bundle file name, ".app" included
    QString bundleIdentifier; // "scanning..." while the bundle is being read
    QString bundlePath;       // the bundle's path, a dropped link already resolved
    QString droppedLink;      // the link that was dropped, when the bundle was reached through one
    std::optional<QString> version;
    std::optional<QByteArray> icon; // PNG bytes
    bool isSystemProtected = false;

    // name with every ".app" removed.
    [[nodiscard]] QString displayName() const;

    friend bool operator==(const AppInfo &, const AppInfo &) = default;
};

size_t qHash(const AppInfo &app, size_t seed = 0) noexcept;
