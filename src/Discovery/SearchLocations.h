// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileCategory.h"

#include <QList>
#include <QString>

class SystemLayout;

// One folder discovery lists, one level deep, and how its entries are judged.
struct Location
{
    enum class Rule {
        identifiers, // the general match, names allowed
        vendorAware, // as identifiers; a folder named after the vendor is taken or searched
        crashReports // report files named after the app's executables, or its identifiers
    };

    QString path; // real path, no trailing "/"
    FileCategory category = FileCategory::other;
    Rule rule = Rule::identifiers;
    // Whether a vendor folder there may be a link. Not where every user can write (/Users/Shared):
    // another user's link would lead discovery into folders that are not this app's.
    bool entersLinks = true;
};

namespace SearchLocations {

// The Library folders where apps leave files, in scan order (which is also the order of the
// results and decides which of two overlapping finds is kept), then the per-user cache and
// temporary folders, under the layout's root and home.
[[nodiscard]] QList<Location> searchLocations(const SystemLayout &layout);

} // namespace SearchLocations
