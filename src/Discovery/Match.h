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
        shared,     // carries an app group that other installed apps hold
        unsure,     // a looser fit: shown for the user to decide, with `note`
    };

    Kind kind = Kind::exact;
    QStringList sharers; // the other apps' names, for shared
    QString reason;      // what matched, as the user reads it: "bundle identifier com.acme.writer"
    QString note;        // for unsure

    [[nodiscard]] static Match exact(QString reason = {}) { return {Kind::exact, {}, reason, {}}; }
    [[nodiscard]] static Match vendorOnly(QString reason = {})
    {
        return {Kind::vendorOnly, {}, reason, {}};
    }
    [[nodiscard]] static Match shared(QStringList apps, QString reason = {})
    {
        return {Kind::shared, std::move(apps), reason, {}};
    }
    [[nodiscard]] static Match unsure(QString reason, QString note)
    {
        return {Kind::unsure, {}, reason, note};
    }

    // Two matches are equal when they decide the same; the reason only explains.
    friend bool operator==(const Match &a, const Match &b)
    {
        return a.kind == b.kind && a.sharers == b.sharers && a.note == b.note;
    }
};

// How a match shows: whether the item starts selected, its confidence and note.
struct MatchVerdict
{
    bool isSelected = true;
    double confidence = 1.0;
    std::optional<QString> note;
};
