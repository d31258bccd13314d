// SPDX-License-Identifier: MIT
// Serialisation half of PropertyList: Qt values back into XML or binary property lists.
#include "PropertyListWriter.h"

#include <QDateTime>
#include <QMetaType>

#include <limits>
#include <memory>

#include <plist/plist.h>

namespace {

constexpr qint64 kPlistEpochMs = 978307200LL * 1000;

struct NodeDeleter
{
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

Node fromVariant(const QVariant &value);

// libplist 2.2 marks an integer as unsigned only when it parses one, so values beyond qint64
// are made that way to keep their sign on the way out.
Node largeUnsigned(quint64 value)
{
    const QByteArray xml = QByteArrayLiteral("<plist version=\"1.0\"><integer>") +
                           QByteArray::number(value) + QByteArrayLiteral("</integer></plist>");
    plist_t node = nullptr;
    plist_from_xml(xml.constData(), uint32_t(xml.size()), &node);
    return Node(node);
}

Node dateNode(const QDateTime &date)
{
    const qint64 ms = date.toMSecsSinceEpoch() - kPlistEpochMs;
    const qint64 seconds = ms >= 0 ? ms / 1000 : -((-ms + 999) / 1000);
    if (seconds < std::numeric_limits<int32_t>::min() ||
        seconds > std::numeric_limits<int32_t>::max())
        return nullptr;
    return Node(plist_new_date(int32_t(seconds), int32_t((ms - seconds * 1000) * 1000)));
}

Node arrayNode(const QVariantList &list)
{
    Node array(plist_new_array());
    for (const QVariant &item : list) {
        Node child = fromVariant(item);
        if (!child)
            return nullptr;
        plist_array_append_item(array.get(), child.release());
    }
    return array;
}

Node dictionaryNode(const QVariantMap &map)
{
    Node dictionary(plist_new_dict());
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        Node child = fromVariant(it.value());
        if (!child)
            return nullptr;
        plist_dict_set_item(dictionary.get(), it.key().toUtf8().constData(), child.release());
    }
    return dictionary;
}

Node integerNode(const QVariant &value)
{
    if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong) {
        const quint64 unsignedValue = value.toULongLong();
        if (unsignedValue > quint64(std::numeric_limits<qint64>::max()))
            return largeUnsigned(unsignedValue);
    }
    return Node(plist_new_uint(uint64_t(value.toLongLong())));
}

Node fromVariant(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return dictionaryNode(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return arrayNode(value.toList());
    case QMetaType::QString:
        return Node(plist_new_string(value.toString().toUtf8().constData()));
    case QMetaType::Bool:
        return Node(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return integerNode(value);
    case QMetaType::Double:
    case QMetaType::Float:
        return Node(plist_new_real(value.toDouble()));
    case QMetaType::QByteArray: {
        const QByteArray data = value.toByteArray();
        return Node(plist_new_data(data.constData(), uint64_t(data.size())));
    }
    case QMetaType::QDateTime:
        return dateNode(value.toDateTime());
    default:
        return nullptr;
    }
}

template <typename Write, typename Free>
QByteArray serialised(const QVariant &value, Write write, Free release)
{
    const Node root = fromVariant(value);
    if (!root)
        return {};
    char *bytes = nullptr;
    uint32_t length = 0;
    write(root.get(), &bytes, &length);
    QByteArray result = bytes ? QByteArray(bytes, qsizetype(length)) : QByteArray();
    release(bytes);
    return result;
}

} // namespace

namespace PropertyList {

QByteArray toXml(const QVariant &value)
{
    return serialised(value, plist_to_xml, plist_to_xml_free);
}

QByteArray toBinary(const QVariant &value)
{
    return serialised(value, plist_to_bin, plist_to_bin_free);
}

} // namespace PropertyList
