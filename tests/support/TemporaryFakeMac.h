// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"
#include "fakemac/FakeMac.h"

#include <QTemporaryDir>

namespace detail {
// Made before the FakeMac base, which lays itself out inside it.
struct TemporaryFolder
{
    QTemporaryDir folder;
};
} // namespace detail

// A fake Mac in a fresh temporary folder, made the one the program sees for as long as it lives.
class TemporaryFakeMac : private detail::TemporaryFolder, public FakeMac
{
public:
    TemporaryFakeMac() : FakeMac(folder.path()) { activate(); }
    ~TemporaryFakeMac() { SystemLayout::reset(); }
    TemporaryFakeMac(const TemporaryFakeMac &) = delete;
    TemporaryFakeMac &operator=(const TemporaryFakeMac &) = delete;

    [[nodiscard]] bool isValid() const { return folder.isValid(); }
};
