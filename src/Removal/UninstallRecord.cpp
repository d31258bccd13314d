// SPDX-License-Identifier: MIT
#include "UninstallRecord.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {
constexpr int kFormat = 1;

QJsonValue bytesJson(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray bytesFrom(const QJsonValue &value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

QByteArray line(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<FileCategory> categoryFrom(const QString &name)
{
    for (const FileCategory category : allFileCategories()) {
        if (caseName(category) == name)
            return category;
    }
    return std::nullopt;
}

UninstallRecord::Item itemFrom(const QJsonObject &object)
{
    UninstallRecord::Item item;
    item.path = bytesFrom(object.value(u"pathBytes"_s));
    item.app = object.value(u"app"_s).toString();
    item.category = categoryFrom(object.value(u"category"_s).toString()).value_or(item.category);
    item.size = object.value(u"size"_s).toInteger();
    if (const QJsonValue id = object.value(u"packageID"_s); id.isString())
        item.packageID = id.toString();
    return item;
}
} // namespace

QString UninstallRecord::Item::displayPath() const
{
    return shownPath.isEmpty() ? QFile::decodeName(path) : shownPath;
}

QStringList UninstallRecord::apps() const
{
    QStringList names;
    for (const Item &item : items) {
        if (!names.contains(item.app))
            names.append(item.app);
    }
    return names;
}

qsizetype UninstallRecord::count(State state) const
{
    return std::count_if(items.cbegin(), items.cend(),
                         [state](const Item &item) { return item.state == state; });
}

QByteArray UninstallRecord::headerLine(const QDateTime &time, const QList<Item> &items)
{
    QJsonArray array;
    for (const Item &item : items) {
        QJsonObject object{{u"path"_s, item.displayPath()},
                           {u"pathBytes"_s, bytesJson(item.path)},
                           {u"app"_s, item.app},
                           {u"category"_s, caseName(item.category)},
                           {u"size"_s, item.size}};
        if (item.packageID)
            object.insert(u"packageID"_s, *item.packageID);
        array.append(object);
    }
    return line({{u"quenzoUninstallRecord"_s, kFormat},
                 {u"time"_s, time.toUTC().toString(Qt::ISODateWithMs)},
                 {u"items"_s, array}});
}

QByteArray UninstallRecord::movedLine(qsizetype index, const QByteArray &trashPath,
                                      bool withAdminRights, const QString &shownTrashPath)
{
    const QString shown = shownTrashPath.isEmpty() ? QFile::decodeName(trashPath) : shownTrashPath;
    return line({{u"moved"_s, index},
                 {u"trashPath"_s, shown},
                 {u"trashPathBytes"_s, bytesJson(trashPath)},
                 {u"admin"_s, withAdminRights}});
}

QByteArray UninstallRecord::restoredLine(qsizetype index)
{
    return line({{u"restored"_s, index}});
}

std::optional<UninstallRecord> UninstallRecord::parse(const QByteArray &journal)
{
    const QList<QByteArray> lines = journal.split('\n');
    const QJsonObject header = QJsonDocument::fromJson(lines.value(0)).object();
    if (header.value(u"quenzoUninstallRecord"_s).toInt() != kFormat)
        return std::nullopt;
    UninstallRecord record;
    record.time = QDateTime::fromString(header.value(u"time"_s).toString(), Qt::ISODateWithMs);
    for (const QJsonValue &value : header.value(u"items"_s).toArray())
        record.items.append(itemFrom(value.toObject()));
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QJsonObject event = QJsonDocument::fromJson(lines.at(i)).object();
        const bool isMove = event.contains(u"moved"_s);
        const qsizetype index = event.value(isMove ? u"moved"_s : u"restored"_s).toInteger(-1);
        if (index < 0 || index >= record.items.size())
            continue;
        Item &item = record.items[index];
        if (isMove) {
            item.trashPath = bytesFrom(event.value(u"trashPathBytes"_s));
            item.withAdminRights = event.value(u"admin"_s).toBool();
            item.state = State::moved;
        } else if (item.state == State::moved) {
            item.state = State::restored;
        }
    }
    return record;
}
