// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <optional>

// The records exchanged with the privileged helper, in both directions. One record per line:
// a word, then each field as " LENGTH:BYTES", then "\n". Fields are raw bytes of any length
// (names need not be UTF-8 and may hold newlines); the word fixes how many fields follow.
//
//   to the helper:   bootout PLIST | forget PACKAGE-ID | move SOURCE DESTINATION
//   from the helper: moved SOURCE FINAL-DESTINATION | done ITEM | failed ITEM REASON
struct HelperRecord
{
    QByteArray word;
    QList<QByteArray> fields;

    friend bool operator==(const HelperRecord &, const HelperRecord &) = default;
};

class HelperBatch
{
public:
    HelperBatch() = delete;

    [[nodiscard]] static QByteArray encode(const HelperRecord &record);
    [[nodiscard]] static QByteArray encode(const QList<HelperRecord> &records);
    // Every record, or nothing when any is malformed or has a word the direction does not know.
    [[nodiscard]] static std::optional<QList<HelperRecord>> parseCommands(QByteArrayView bytes);
    [[nodiscard]] static std::optional<QList<HelperRecord>> parseResults(QByteArrayView bytes);

    // The number of fields of a command or result word; -1 for a word that is neither.
    [[nodiscard]] static int commandArity(QByteArrayView word);
    [[nodiscard]] static int resultArity(QByteArrayView word);
};
