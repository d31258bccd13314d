// SPDX-License-Identifier: MIT
#include "PropertyListGuard.h"

#include "BigEndian.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

// --- XML ---------------------------------------------------------------------------------------

bool isNameEnd(char c)
{
    return c == '>' || c == '/' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isContainerTag(const QByteArray &bytes, qsizetype nameStart)
{
    for (const char *name : {"dict", "array"}) {
        const QByteArray tag(name);
        const qsizetype end = nameStart + tag.size();
        if (bytes.mid(nameStart, tag.size()) == tag &&
            (end >= bytes.size() || isNameEnd(bytes[end])))
            return true;
    }
    return false;
}

// Where a markup construct that cannot hold elements ends, or -1 for an element tag.
qsizetype skipNonElement(const QByteArray &bytes, qsizetype at)
{
    if (bytes.mid(at, 4) == "<!--")
        return bytes.indexOf("-->", at + 4);
    if (bytes.mid(at, 9) == "<![CDATA[")
        return bytes.indexOf("]]>", at + 9);
    if (bytes.mid(at, 2) == "<?")
        return bytes.indexOf("?>", at + 2);
    if (bytes.mid(at, 2) == "<!")
        return bytes.indexOf('>', at + 2);
    return -2;
}

// --- Binary ------------------------------------------------------------------------------------

struct BinaryLayout
{
    const QByteArray &bytes;
    int offsetSize = 0;
    int referenceSize = 0;
    quint64 objectCount = 0;
    quint64 topObject = 0;
    quint64 offsetTable = 0;
};

constexpr qsizetype kTrailerSize = 32;
constexpr qsizetype kHeaderSize = 8;

std::optional<BinaryLayout> readTrailer(const QByteArray &bytes)
{
    if (bytes.size() < kHeaderSize + kTrailerSize)
        return std::nullopt;
    const quint64 trailer = quint64(bytes.size() - kTrailerSize);
    BinaryLayout layout{bytes};
    layout.offsetSize = quint8(bytes[qsizetype(trailer) + 6]);
    layout.referenceSize = quint8(bytes[qsizetype(trailer) + 7]);
    layout.objectCount = BigEndian::read(bytes, trailer + 8, 8);
    layout.topObject = BigEndian::read(bytes, trailer + 16, 8);
    layout.offsetTable = BigEndian::read(bytes, trailer + 24, 8);
    if (layout.offsetSize < 1 || layout.offsetSize > 8 || layout.referenceSize < 1 ||
        layout.referenceSize > 8)
        return std::nullopt;
    if (layout.objectCount == 0 || layout.objectCount > PropertyListGuard::kMaximumObjects ||
        layout.topObject >= layout.objectCount)
        return std::nullopt;
    if (layout.offsetTable < quint64(kHeaderSize) || layout.offsetTable > trailer ||
        (trailer - layout.offsetTable) / quint64(layout.offsetSize) < layout.objectCount)
        return std::nullopt;
    return layout;
}

struct ObjectHeader
{
    quint8 type;
    quint64 count;    // elements, characters or bytes, as the type counts them
    quint64 position; // first byte after the marker and its count
};

std::optional<ObjectHeader> objectHeader(const BinaryLayout &layout, quint64 object)
{
    const QByteArray &bytes = layout.bytes;
    const quint64 offset = BigEndian::read(
        bytes, layout.offsetTable + object * quint64(layout.offsetSize), layout.offsetSize);
    if (offset < quint64(kHeaderSize) || offset >= layout.offsetTable)
        return std::nullopt;
    const quint8 marker = quint8(bytes[qsizetype(offset)]);
    ObjectHeader header{quint8(marker >> 4), quint64(marker & 0x0F), offset + 1};
    if (header.count == 0x0F) {
        const quint64 at = header.position;
        if (at >= layout.offsetTable || (quint8(bytes[qsizetype(at)]) >> 4) != 0x1)
            return std::nullopt;
        const int size = 1 << (quint8(bytes[qsizetype(at)]) & 0x0F);
        if (size > 8 || at + 1 + quint64(size) > layout.offsetTable)
            return std::nullopt;
        header.count = BigEndian::read(bytes, at + 1, size);
        header.position = at + 1 + quint64(size);
    }
    return header;
}

// libplist asserts (and so aborts) on text holding a NUL character; no real list has one.
bool isTextWithoutNul(const BinaryLayout &layout, const ObjectHeader &header)
{
    const quint64 unit = header.type == 0x6 ? 2 : 1;
    const quint64 available = layout.offsetTable - header.position;
    if (header.count > available / unit)
        return false;
    for (quint64 i = 0; i < header.count; ++i) {
        const qsizetype at = qsizetype(header.position + i * unit);
        if (layout.bytes[at] == 0 && (unit == 1 || layout.bytes[at + 1] == 0))
            return false;
    }
    return true;
}

// The object references of a container (array, set, dictionary keys and values), or nothing
// for a malformed object. Scalars have none.
std::optional<std::vector<quint64>> references(const BinaryLayout &layout, quint64 object)
{
    const auto header = objectHeader(layout, object);
    if (!header)
        return std::nullopt;
    if (header->type == 0x5 || header->type == 0x6) {
        if (!isTextWithoutNul(layout, *header))
            return std::nullopt;
        return std::vector<quint64>{};
    }
    const bool dictionary = header->type == 0xD;
    if (header->type != 0xA && header->type != 0xC && !dictionary)
        return std::vector<quint64>{};
    const quint64 available =
        (layout.offsetTable - header->position) / quint64(layout.referenceSize);
    if (header->count > (dictionary ? available / 2 : available))
        return std::nullopt;
    const quint64 total = dictionary ? header->count * 2 : header->count;
    std::vector<quint64> result;
    result.reserve(total);
    for (quint64 i = 0; i < total; ++i) {
        const quint64 reference =
            BigEndian::read(layout.bytes, header->position + i * quint64(layout.referenceSize),
                            layout.referenceSize);
        if (reference >= layout.objectCount)
            return std::nullopt;
        result.push_back(reference);
    }
    return result;
}

struct Frame
{
    quint64 object;
    std::vector<quint64> children;
    size_t next = 0;
};

// Depth-first over the object graph with an explicit stack, each object visited once: the
// height and expanded size of every object are remembered, a reference back into the current
// path is a cycle.
bool isGraphWithinLimits(const BinaryLayout &layout)
{
    enum : quint8 { Unvisited, Open, Done };
    std::vector<quint8> state(layout.objectCount, Unvisited);
    std::vector<quint16> height(layout.objectCount, 0);
    std::vector<quint32> nodes(layout.objectCount, 0);
    std::vector<Frame> stack;
    auto push = [&](quint64 object) {
        auto children = references(layout, object);
        if (!children || stack.size() >= size_t(PropertyListGuard::kMaximumDepth))
            return false;
        state[object] = Open;
        stack.push_back({object, std::move(*children)});
        return true;
    };
    if (!push(layout.topObject))
        return false;
    while (!stack.empty()) {
        Frame &frame = stack.back();
        if (frame.next < frame.children.size()) {
            const quint64 child = frame.children[frame.next++];
            if (state[child] == Open || (state[child] == Unvisited && !push(child)))
                return false;
            continue;
        }
        quint64 total = 1;
        quint16 tallest = 0;
        for (const quint64 child : frame.children) {
            total += nodes[child];
            tallest = std::max(tallest, height[child]);
        }
        if (total > PropertyListGuard::kMaximumNodes)
            return false;
        nodes[frame.object] = quint32(total);
        height[frame.object] = quint16(tallest + 1);
        if (height[frame.object] > PropertyListGuard::kMaximumDepth)
            return false;
        state[frame.object] = Done;
        stack.pop_back();
    }
    return true;
}

} // namespace

namespace PropertyListGuard {

bool isXmlWithinLimits(const QByteArray &bytes)
{
    int depth = 0;
    for (qsizetype at = bytes.indexOf('<'); at >= 0; at = bytes.indexOf('<', at + 1)) {
        if (const qsizetype end = skipNonElement(bytes, at); end != -2) {
            if (end < 0)
                return false;
            at = end;
            continue;
        }
        const bool closing = at + 1 < bytes.size() && bytes[at + 1] == '/';
        const qsizetype nameStart = at + (closing ? 2 : 1);
        const qsizetype tagEnd = bytes.indexOf('>', nameStart);
        if (tagEnd < 0)
            return false;
        if (isContainerTag(bytes, nameStart)) {
            if (closing)
                depth = std::max(0, depth - 1); // a stray close must not buy extra depth
            else if (bytes[tagEnd - 1] != '/' && ++depth > kMaximumDepth)
                return false;
        }
        at = tagEnd;
    }
    return true;
}

bool isBinaryWithinLimits(const QByteArray &bytes)
{
    const auto layout = readTrailer(bytes);
    return layout && isGraphWithinLimits(*layout);
}

} // namespace PropertyListGuard
