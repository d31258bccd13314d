// SPDX-License-Identifier: MIT
#include "CliRunner.h"

#include "HistoryCommand.h"
#include "OrphansCommand.h"
#include "ScanProgress.h"
#include "SessionReport.h"
#include "UninstallCommand.h"
#include "ViewModels/MainViewModel.h"

#include <QDir>
#include <QEventLoop>
#include <QJsonDocument>
#include <QUrl>

#include <cstdio>

CliRunner::CliRunner(const CliOptions &options, SystemLayout layout)
    : m_options(options), m_layout(std::move(layout)), m_out(stdout), m_err(stderr)
{}

int CliRunner::run()
{
    switch (m_options.command) {
    case CliOptions::Command::orphans:
        return OrphansCommand::run(m_layout, m_options.json, m_out);
    case CliOptions::Command::history:
    case CliOptions::Command::restore:
        return HistoryCommand(m_options, m_layout, m_out, m_err).run();
    case CliOptions::Command::scan:
    case CliOptions::Command::uninstall:
        break;
    }
    // Progress goes to stderr while discovering, and only on a terminal.
    const auto progress = ScanProgress::forTerminal();
    MainViewModel::Dependencies dependencies;
    dependencies.discovery =
        std::make_shared<FileDiscoveryService>(m_layout, nullptr, ScanProgress::callback(progress));
    MainViewModel viewModel(m_layout, std::move(dependencies));
    scan(viewModel);
    if (progress)
        progress->finish();
    if (m_options.command == CliOptions::Command::uninstall)
        return uninstall(viewModel);
    printScan(viewModel);
    return viewModel.sessions().isEmpty() ? 1 : 0;
}

int CliRunner::uninstall(MainViewModel &viewModel)
{
    // As JSON, one document at the end, with the counters and the whole log.
    if (!m_options.json)
        printScan(viewModel);
    int code = 1;
    if (!viewModel.sessions().isEmpty())
        code = UninstallCommand(m_options, m_out, m_err).run(viewModel);
    if (m_options.json)
        printScan(viewModel);
    return code;
}

void CliRunner::scan(MainViewModel &viewModel)
{
    QList<QUrl> urls;
    for (const QString &app : std::as_const(m_options.apps))
        urls.append(QUrl::fromLocalFile(QDir::current().absoluteFilePath(app)));
    QEventLoop loop;
    QObject::connect(&viewModel, &MainViewModel::stateChanged, &loop, [&] {
        if (!viewModel.isScanning())
            loop.quit();
    });
    viewModel.handleDroppedFiles(urls);
    if (viewModel.isScanning())
        loop.exec();
}

void CliRunner::printScan(const MainViewModel &viewModel)
{
    if (m_options.json) {
        m_out << QJsonDocument(SessionReport::controllerJson(viewModel))
                     .toJson(QJsonDocument::Indented);
        m_out.flush();
        return;
    }
    bool first = true;
    for (const auto &session : viewModel.sessions()) {
        if (!first)
            m_out << '\n';
        first = false;
        SessionReport::writeText(m_out, *session, m_layout);
    }
    if (viewModel.notice())
        m_out << (first ? "" : "\n") << "Notice: " << *viewModel.notice() << '\n';
    m_out.flush();
}
