// SPDX-License-Identifier: MIT
#include "CliRun.h"

#include <QJsonDocument>
#include <QProcess>

CliRun CliRun::of(const QStringList &arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QStringLiteral(QUENZO_CLI_PATH), arguments);
    if (!process.waitForFinished(120'000))
        return {};
    return CliRun{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                  QString::fromUtf8(process.readAllStandardOutput()),
                  QString::fromUtf8(process.readAllStandardError())};
}

CliRun CliRun::on(const QString &command, const QString &root, const QString &home,
                  const QStringList &options, const QString &app)
{
    return of(QStringList{command, QStringLiteral("--root"), root, QStringLiteral("--home"), home} +
              options + QStringList{app});
}

QJsonObject CliRun::json() const
{
    return QJsonDocument::fromJson(out.toUtf8()).object();
}
