// SPDX-License-Identifier: MIT
#include "OrphansCommand.h"

#include "Discovery/OrphanFinder.h"
#include "Models/ByteCountFormatter.h"
#include "SessionReport.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace OrphansCommand {

int run(const SystemLayout &layout, bool asJson, QTextStream &out)
{
    const QList<OrphanGroup> groups = OrphanFinder(layout).find();
    if (asJson)
        out << QJsonDocument(json(groups)).toJson(QJsonDocument::Indented);
    else
        writeText(out, groups);
    out.flush();
    return 0;
}

QJsonObject json(const QList<OrphanGroup> &groups)
{
    QJsonArray array;
    for (const OrphanGroup &group : groups) {
        QJsonArray items;
        for (const FileItem &item : group.items)
            items.append(SessionReport::itemJson(item));
        array.append(QJsonObject{
            {QStringLiteral("name"), group.name},
            {QStringLiteral("identifier"),
             group.identifier.isEmpty() ? QJsonValue() : QJsonValue(group.identifier)},
            {QStringLiteral("totalSize"), group.totalSize()},
            {QStringLiteral("formattedSize"), formattedByteCount(group.totalSize())},
            {QStringLiteral("items"), items},
        });
    }
    return QJsonObject{{QStringLiteral("groups"), array}};
}

void writeText(QTextStream &out, const QList<OrphanGroup> &groups)
{
    if (groups.isEmpty()) {
        out << "No leftovers of deleted apps were found.\n";
        return;
    }
    out << "Leftovers of apps that are no longer installed\n"
        << "[x] marks items whose owner is certain; check the others before removing them.\n";
    qsizetype count = 0;
    qint64 total = 0;
    for (const OrphanGroup &group : groups) {
        out << '\n' << group.name;
        if (!group.identifier.isEmpty())
            out << " (" << group.identifier << ')';
        out << "  " << group.items.size() << (group.items.size() == 1 ? " item, " : " items, ")
            << formattedByteCount(group.totalSize()) << '\n';
        for (const FileItem &item : group.items) {
            out << "  [" << (item.isSelected ? 'x' : ' ') << "] " << item.displayPath() << "  "
                << item.formattedSize() << '\n';
            if (item.note)
                out << "      " << *item.note << '\n';
        }
        count += group.items.size();
        total += group.totalSize();
    }
    out << '\n'
        << groups.size() << (groups.size() == 1 ? " app, " : " apps, ") << count
        << (count == 1 ? " item, " : " items, ") << formattedByteCount(total) << '\n';
}

} // namespace OrphansCommand
