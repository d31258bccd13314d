// SPDX-License-Identifier: MIT
#include "HistoryCommand.h"

#include "Models/ByteCountFormatter.h"
#include "Removal/HistoryStore.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {
QString stateName(UninstallRecord::State state)
{
    switch (state) {
    case UninstallRecord::State::planned:
        return QStringLiteral("planned");
    case UninstallRecord::State::moved:
        return QStringLiteral("moved");
    case UninstallRecord::State::restored:
        return QStringLiteral("restored");
    }
    return {};
}

QJsonValue bytes(const QByteArray &path)
{
    return path.isEmpty() ? QJsonValue() : QJsonValue(QString::fromLatin1(path.toBase64()));
}

QJsonObject itemJson(const UninstallRecord::Item &item)
{
    return QJsonObject{
        {QStringLiteral("path"), item.displayPath()},
        {QStringLiteral("pathBytes"), bytes(item.path)},
        {QStringLiteral("trashPathBytes"), bytes(item.trashPath)},
        {QStringLiteral("app"), item.app},
        {QStringLiteral("category"), caseName(item.category)},
        {QStringLiteral("size"), item.size},
        {QStringLiteral("admin"), item.withAdminRights},
        {QStringLiteral("packageID"), item.packageID ? QJsonValue(*item.packageID) : QJsonValue()},
        {QStringLiteral("state"), stateName(item.state)},
    };
}

void print(QTextStream &out, const QJsonObject &object)
{
    out << QJsonDocument(object).toJson(QJsonDocument::Indented);
}
} // namespace

HistoryCommand::HistoryCommand(const CliOptions &options, const SystemLayout &layout,
                               QTextStream &out, QTextStream &err)
    : m_options(options), m_layout(layout), m_history(layout), m_out(out), m_err(err)
{}

int HistoryCommand::run()
{
    const int code = m_options.command == CliOptions::Command::history ? history() : restore();
    m_out.flush();
    m_err.flush();
    return code;
}

QJsonObject HistoryCommand::recordJson(const UninstallRecord &record)
{
    QJsonArray items;
    for (const UninstallRecord::Item &item : record.items)
        items.append(itemJson(item));
    return QJsonObject{
        {QStringLiteral("record"), record.fileName},
        {QStringLiteral("time"), record.time.toString(Qt::ISODateWithMs)},
        {QStringLiteral("apps"), QJsonArray::fromStringList(record.apps())},
        {QStringLiteral("movedCount"), record.count(UninstallRecord::State::moved)},
        {QStringLiteral("restoredCount"), record.count(UninstallRecord::State::restored)},
        {QStringLiteral("items"), items},
    };
}

QJsonObject HistoryCommand::restoreJson(const UninstallRecord &record,
                                        const RestoreRun::Report &report)
{
    QJsonArray items;
    for (const RestoreRun::ItemReport &line : report.items) {
        QJsonObject item = itemJson(line.item);
        item.remove(QStringLiteral("state"));
        item.insert(QStringLiteral("outcome"), RestoreRun::caseName(line.outcome));
        item.insert(QStringLiteral("message"),
                    line.message.isEmpty() ? QJsonValue() : QJsonValue(line.message));
        items.append(item);
    }
    return QJsonObject{
        {QStringLiteral("record"), record.fileName},
        {QStringLiteral("restoredCount"), report.count(RestoreRun::Outcome::restored)},
        {QStringLiteral("complete"), report.isComplete()},
        {QStringLiteral("summary"), report.summary()},
        {QStringLiteral("items"), items},
    };
}

int HistoryCommand::history()
{
    QList<UninstallRecord> records;
    for (const QString &name : m_history.names()) {
        if (auto record = m_history.load(name))
            records.append(std::move(*record));
    }
    if (m_options.json) {
        QJsonArray array;
        for (const UninstallRecord &record : std::as_const(records))
            array.append(recordJson(record));
        print(m_out, {{QStringLiteral("records"), array}});
        return 0;
    }
    if (records.isEmpty()) {
        m_out << "No uninstalls recorded yet.\n";
        return 0;
    }
    // Newest first, as people look for what they just did.
    for (auto it = records.crbegin(); it != records.crend(); ++it) {
        qint64 size = 0;
        for (const UninstallRecord::Item &item : it->items)
            size += item.state == UninstallRecord::State::moved ? item.size : 0;
        m_out << it->time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")) << "  "
              << it->apps().join(QStringLiteral(", ")) << "  "
              << it->count(UninstallRecord::State::moved) << " in the Trash ("
              << formattedByteCount(size) << ")";
        if (const qsizetype back = it->count(UninstallRecord::State::restored))
            m_out << ", " << back << " put back";
        m_out << "\n  quenzo-cli restore " << it->fileName << '\n';
    }
    return 0;
}

int HistoryCommand::restore()
{
    const auto record = m_options.last ? m_history.latest() : m_history.load(m_options.record);
    if (!record) {
        m_err << "quenzo-cli: "
              << (m_options.last ? QStringLiteral("no uninstall recorded yet")
                                 : QStringLiteral("no such record: ") + m_options.record)
              << '\n';
        return 2;
    }
    const RestoreRun::Report report = RestoreRun(m_layout).run(*record);
    if (m_options.json)
        print(m_out, restoreJson(*record, report));
    else
        writeReport(report);
    return report.isComplete() ? 0 : 1;
}

void HistoryCommand::writeReport(const RestoreRun::Report &report)
{
    using Outcome = RestoreRun::Outcome;
    for (const RestoreRun::ItemReport &line : report.items) {
        // What the uninstall never moved, or an earlier restore brought back, needs no line.
        if (line.outcome == Outcome::notMoved || line.outcome == Outcome::alreadyRestored)
            continue;
        m_out << (line.isBack() ? "" : "! ") << line.outcomeText() << ": "
              << line.item.displayPath() << '\n';
    }
    m_out << '\n' << report.summary() << '\n';
}
