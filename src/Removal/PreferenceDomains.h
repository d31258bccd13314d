// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileItem.h"

#include <QList>
#include <QString>

// A preference domain whose file was moved away, for `defaults delete`.
struct PreferenceDomain
{
    QString domain;
    bool byHost = false;

    friend bool operator==(const PreferenceDomain &, const PreferenceDomain &) = default;
};

class SystemLayout;

namespace PreferenceDomains {

// The domains of the preference files among `items` (in the user's Preferences folder or its
// ByHost folder), in order, duplicates kept. The global domain and anything that is not a
// plain reverse-DNS name are left out.
[[nodiscard]] QList<PreferenceDomain> in(const SystemLayout &layout, const QList<FileItem> &items);

} // namespace PreferenceDomains
