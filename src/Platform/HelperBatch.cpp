// SPDX-License-Identifier: MIT
#include "HelperBatch.h"

namespace {
// No path or reason comes near this; a longer field is a malformed batch, not an allocation.
constexpr qsizetype kMaximumField = 1 << 20;

std::optional<QList<HelperRecord>> parse(QByteArrayView bytes, int (*arity)(QByteArrayView))
{
    QList<HelperRecord> records;
    qsizetype at = 0;
    while (at < bytes.size()) {
        const qsizetype wordEnd = [&] {
            qsizetype end = at;
            while (end < bytes.size() && bytes[end] != ' ' && bytes[end] != '\n')
                ++end;
            return end;
        }();
        HelperRecord record{bytes.sliced(at, wordEnd - at).toByteArray(), {}};
        const int fields = arity(record.word);
        if (fields < 0)
            return std::nullopt;
        at = wordEnd;
        for (int i = 0; i < fields; ++i) {
            if (at >= bytes.size() || bytes[at] != ' ')
                return std::nullopt;
            ++at;
            qsizetype length = 0;
            const qsizetype digits = at;
            while (at < bytes.size() && bytes[at] >= '0' && bytes[at] <= '9' && at - digits < 8) {
                length = length * 10 + (bytes[at] - '0');
                ++at;
            }
            // One way only to write a length: no leading zeros.
            const bool leadingZero = at - digits > 1 && bytes[digits] == '0';
            if (at == digits || leadingZero || at >= bytes.size() || bytes[at] != ':' ||
                length > kMaximumField || length > bytes.size() - at - 1)
                return std::nullopt;
            ++at;
            record.fields.append(bytes.sliced(at, length).toByteArray());
            at += length;
        }
        if (at >= bytes.size() || bytes[at] != '\n')
            return std::nullopt;
        ++at;
        records.append(std::move(record));
    }
    return records;
}
} // namespace

QByteArray HelperBatch::encode(const HelperRecord &record)
{
    QByteArray line = record.word;
    for (const QByteArray &field : record.fields)
        line += ' ' + QByteArray::number(field.size()) + ':' + field;
    return line + '\n';
}

QByteArray HelperBatch::encode(const QList<HelperRecord> &records)
{
    QByteArray bytes;
    for (const HelperRecord &record : records)
        bytes += encode(record);
    return bytes;
}

std::optional<QList<HelperRecord>> HelperBatch::parseCommands(QByteArrayView bytes)
{
    return parse(bytes, &commandArity);
}

std::optional<QList<HelperRecord>> HelperBatch::parseResults(QByteArrayView bytes)
{
    return parse(bytes, &resultArity);
}

int HelperBatch::commandArity(QByteArrayView word)
{
    if (word == "bootout" || word == "forget")
        return 1;
    return word == "move" ? 2 : -1;
}

int HelperBatch::resultArity(QByteArrayView word)
{
    if (word == "done")
        return 1;
    return word == "moved" || word == "failed" ? 2 : -1;
}
