// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Why an entry belongs to the app. Absent (std::nullopt) means it does not.
struct Match
{
    enum class Kind {
        exact,      // carries one of the app's identifiers or names
        vendorOnly, // carries only the vendor prefix of the app's identifier
        shared,     // carries an app group that other installed apps of the namespace hold
    };

    Kind kind = Kind::exact;
    QStringList sharers; // the other apps' names, for shared

    [[nodiscard]] static Match exact() { return {}; }
    [[nodiscard]] static Match vendorOnly() { return {Kind::vendorOnly, {}}; }
    [[nodiscard]] static Match shared(QStringList apps) { return {Kind::shared, std::move(apps)}; }

    friend bool operator==(const Match &, const Match &) = default;
};

// How a match shows: whether the item starts selected, its confidence and note.
struct MatchVerdict
{
    bool isSelected = true;
    double confidence = 1.0;
    std::optional<QString> note;
};
