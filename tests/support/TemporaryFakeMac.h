// SPDX-License-Identifier: MIT
#pragma once

#include "fakemac/FakeMac.h"

#include <QTemporaryDir>

namespace detail {
// Made before the FakeMac base, which lays itself out inside it.
struct TemporaryFolder
{
    QTemporaryDir folder;
};
} // namespace detail

// A fake Mac in a fresh temporary folder; layout() is how the program sees it.
class TemporaryFakeMac : private detail::TemporaryFolder, public FakeMac
{
public:
    TemporaryFakeMac() : FakeMac(folder.path()) {}
    TemporaryFakeMac(const TemporaryFakeMac &) = delete;
    TemporaryFakeMac &operator=(const TemporaryFakeMac &) = delete;

    [[nodiscard]] bool isValid() const { return folder.isValid(); }
};
