// SPDX-License-Identifier: MIT
#include "AppInfo.h"

namespace {
template <typename T>
void combineOptional(QtPrivate::QHashCombine &combine, size_t &seed, const std::optional<T> &value)
{
    seed = combine(seed, value.has_value());
    if (value)
        seed = combine(seed, *value);
}
} // namespace

QString AppInfo::displayName() const
{
    return QString(name).remove(QStringLiteral(".app"));
}

size_t qHash(const AppInfo &app, size_t seed) noexcept
{
    QtPrivate::QHashCombine combine;
    seed = combine(seed, app.id);
    seed = combine(seed, app.name);
    seed = combine(seed, app.bundleIdentifier);
    seed = combine(seed, app.bundlePath);
    combineOptional(combine, seed, app.version);
    combineOptional(combine, seed, app.icon);
    seed = combine(seed, app.isSystemProtected);
    return seed;
}
