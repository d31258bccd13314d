// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>
#include <optional>
#include <utility>

// An application (or any) bundle on disk: a folder with Contents/Info.plist.
class Bundle
{
public:
    // Nothing when the path is not an existing folder. A folder without a readable
    // Info.plist is still a bundle, with no identifier and an empty information dictionary.
    [[nodiscard]] static std::optional<Bundle> open(const QString &path);

    [[nodiscard]] QString path() const { return m_path; }
    // CFBundleIdentifier when it is a non-empty text.
    [[nodiscard]] std::optional<QString> identifier() const;
    [[nodiscard]] const QVariantMap &infoDictionary() const { return m_info; }
    // The value of an Info.plist key when it is a text.
    [[nodiscard]] std::optional<QString> stringValue(const QString &key) const;
    // Contents/MacOS/<CFBundleExecutable>, when the key is a text.
    [[nodiscard]] std::optional<QString> executablePath() const;

    // This program's own bundle identifier; nothing when it does not run from a bundle.
    [[nodiscard]] static std::optional<QString> mainBundleIdentifier();
    // The X.app folder of an executable at X.app/Contents/MacOS/<name>; nothing otherwise.
    [[nodiscard]] static std::optional<QString> enclosingBundlePath(const QString &executablePath);

private:
    Bundle(QString path, QVariantMap info) : m_path(std::move(path)), m_info(std::move(info)) {}

    QString m_path;
    QVariantMap m_info;
};
