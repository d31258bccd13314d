// SPDX-License-Identifier: MIT
#include "ByteCountFormatter.h"

#include <array>

namespace {

struct Unit
{
    quint64 limit;   // counts below this use the unit
    quint64 divisor; // bytes per unit
    int fractionDigits;
    const char *name;
};

constexpr quint64 kThousand = 1000;
constexpr quint64 kMillion = kThousand * kThousand;
constexpr quint64 kBillion = kMillion * kThousand;
constexpr quint64 kTrillion = kBillion * kThousand;
constexpr quint64 kQuadrillion = kTrillion * kThousand;
constexpr quint64 kQuintillion = kQuadrillion * kThousand;

// The unit follows the magnitude of the count itself, so 999,999 bytes stay in KB even when
// rounding carries them to "1,000 KB".
constexpr std::array<Unit, 6> kUnits{{
    {kMillion, kThousand, 0, "KB"},
    {kBillion, kMillion, 1, "MB"},
    {kTrillion, kBillion, 2, "GB"},
    {kQuadrillion, kTrillion, 2, "TB"},
    {kQuintillion, kQuadrillion, 2, "PB"},
    {~quint64(0), kQuintillion, 2, "EB"},
}};

quint64 powerOfTen(int exponent)
{
    quint64 value = 1;
    for (int i = 0; i < exponent; ++i)
        value *= 10;
    return value;
}

QString grouped(quint64 value)
{
    QString digits = QString::number(value);
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, QLatin1Char(','));
    return digits;
}

// The count in the unit, scaled by 10^fractionDigits and rounded half to even, all in integers
// so that no binary fraction decides a tie.
quint64 scaledRounded(quint64 bytes, const Unit &unit)
{
    const quint64 divisor = unit.divisor / powerOfTen(unit.fractionDigits);
    quint64 quotient = bytes / divisor;
    const quint64 remainder = bytes % divisor;
    if (remainder * 2 > divisor || (remainder * 2 == divisor && quotient % 2 == 1))
        ++quotient;
    return quotient;
}

QString formattedMagnitude(quint64 bytes)
{
    if (bytes == 0)
        return QStringLiteral("Zero KB");
    if (bytes == 1)
        return QStringLiteral("1 byte");
    if (bytes < kThousand)
        return QString::number(bytes) + QStringLiteral(" bytes");

    const Unit *unit = &kUnits.back();
    for (const Unit &candidate : kUnits) {
        if (bytes < candidate.limit) {
            unit = &candidate;
            break;
        }
    }
    const quint64 scale = powerOfTen(unit->fractionDigits);
    const quint64 rounded = scaledRounded(bytes, *unit);
    QString text = grouped(rounded / scale);
    if (quint64 fraction = rounded % scale; fraction != 0) {
        QString digits = QString::number(fraction).rightJustified(unit->fractionDigits, u'0');
        while (digits.endsWith(QLatin1Char('0')))
            digits.chop(1);
        text += QLatin1Char('.') + digits;
    }
    return text + QLatin1Char(' ') + QLatin1String(unit->name);
}

} // namespace

QString formattedByteCount(qint64 bytes)
{
    if (bytes >= 0)
        return formattedMagnitude(quint64(bytes));
    // Negating INT64_MIN overflows; its magnitude is computed in unsigned arithmetic instead.
    const quint64 magnitude = quint64(-(bytes + 1)) + 1;
    return QLatin1Char('-') + formattedMagnitude(magnitude);
}
