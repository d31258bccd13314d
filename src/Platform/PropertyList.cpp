// SPDX-License-Identifier: MIT
#include "PropertyList.h"
#include "LogCategories.h"

#include "PropertyListGuard.h"
#include "SafeFile.h"

#include <QDateTime>
#include <QMetaType>

#include <cstdlib>
#include <limits>
#include <memory>

#include <plist/plist.h>

namespace {

// Seconds from the Unix epoch to the property-list epoch, 2001-01-01 00:00 UTC.
constexpr qint64 kPlistEpoch = 978307200;

struct NodeDeleter
{
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

struct Deleter
{
    void operator()(char *text) const { std::free(text); }
};
using CText = std::unique_ptr<char, Deleter>;

const QByteArray kBinaryMagic = QByteArrayLiteral("bplist00");

std::optional<QVariant> toVariant(plist_t node, int depth);

// An integer node holds 64 bits without its sign; libplist 2.2 only shows the sign when it
// writes the node out, so values beyond qint64 are told apart that way.
QVariant integerValue(plist_t node)
{
    uint64_t value = 0;
    plist_get_uint_val(node, &value);
    if (value <= uint64_t(std::numeric_limits<qint64>::max()))
        return QVariant::fromValue(qint64(value));
    const Node copy(plist_copy(node));
    char *xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(copy.get(), &xml, &length);
    const bool negative = xml && QByteArray(xml, length).contains("<integer>-");
    plist_to_xml_free(xml);
    return negative ? QVariant::fromValue(qint64(value)) : QVariant::fromValue(quint64(value));
}

std::optional<QVariant> arrayValue(plist_t node, int depth)
{
    QVariantList list;
    const uint32_t size = plist_array_get_size(node);
    list.reserve(qsizetype(size));
    for (uint32_t i = 0; i < size; ++i) {
        auto item = toVariant(plist_array_get_item(node, i), depth + 1);
        if (!item)
            return std::nullopt;
        list.append(*item);
    }
    return list;
}

std::optional<QVariant> dictionaryValue(plist_t node, int depth)
{
    QVariantMap map;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    if (!iterator)
        return std::nullopt;
    std::optional<QVariant> result;
    for (;;) {
        char *rawKey = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &rawKey, &value);
        const CText key(rawKey);
        if (!value) {
            result = map;
            break;
        }
        auto item = toVariant(value, depth + 1);
        if (!key || !item)
            break;
        map.insert(QString::fromUtf8(key.get()), *item);
    }
    std::free(iterator);
    return result;
}

QVariant scalarValue(plist_t node, plist_type type)
{
    switch (type) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char *text = plist_get_string_ptr(node, &length);
        return text ? QString::fromUtf8(text, qsizetype(length)) : QString();
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char *data = plist_get_data_ptr(node, &length);
        return data ? QByteArray(data, qsizetype(length)) : QByteArray();
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        const qint64 ms = (kPlistEpoch + seconds) * 1000 + microseconds / 1000;
        return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC);
    }
    default:
        return {};
    }
}

std::optional<QVariant> toVariant(plist_t node, int depth)
{
    if (!node || depth > PropertyListGuard::kMaximumDepth)
        return std::nullopt;
    const plist_type type = plist_get_node_type(node);
    switch (type) {
    case PLIST_DICT:
        return dictionaryValue(node, depth);
    case PLIST_ARRAY:
        return arrayValue(node, depth);
    case PLIST_UINT:
        return integerValue(node);
    case PLIST_BOOLEAN:
    case PLIST_REAL:
    case PLIST_STRING:
    case PLIST_DATA:
    case PLIST_DATE:
        return scalarValue(node, type);
    default:
        return std::nullopt;
    }
}

Node parseNode(const QByteArray &bytes)
{
    plist_t root = nullptr;
    if (bytes.startsWith(kBinaryMagic)) {
        if (PropertyListGuard::isBinaryWithinLimits(bytes))
            plist_from_bin(bytes.constData(), uint32_t(bytes.size()), &root);
        else
            qCDebug(lcPlatform) << "binary property list refused: beyond the guard's limits";
        return Node(root);
    }
    // libplist does not skip a byte-order mark itself.
    const QByteArray xml = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
    if (!xml.trimmed().startsWith('<'))
        qCDebug(lcPlatform) << "property list refused: neither binary nor XML";
    else if (!PropertyListGuard::isXmlWithinLimits(xml))
        qCDebug(lcPlatform) << "XML property list refused: beyond the guard's limits";
    else
        plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
    return Node(root);
}

} // namespace

namespace PropertyList {

std::optional<QVariant> parse(const QByteArray &bytes)
{
    if (bytes.isEmpty() || bytes.size() > kMaximumSize) {
        qCDebug(lcPlatform) << "property list refused: size" << bytes.size();
        return std::nullopt;
    }
    const Node root = parseNode(bytes);
    if (!root) {
        qCDebug(lcPlatform) << "property list refused: not well-formed or beyond the limits";
        return std::nullopt;
    }
    auto value = toVariant(root.get(), 0);
    if (!value)
        qCDebug(lcPlatform) << "property list refused: a value too deep or of an unknown type";
    return value;
}

std::optional<QVariant> read(const QString &path)
{
    const auto bytes = SafeFile::read(path, kMaximumSize);
    if (!bytes) {
        qCDebug(lcPlatform) << "property list refused:" << path << "is not a readable regular file";
        return std::nullopt;
    }
    auto value = parse(*bytes);
    if (!value)
        qCDebug(lcPlatform) << "property list refused:" << path;
    return value;
}

std::optional<QVariantMap> readDictionary(const QString &path)
{
    const auto value = read(path);
    if (!value || value->typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return value->toMap();
}

} // namespace PropertyList
