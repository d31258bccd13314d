// SPDX-License-Identifier: MIT
#include "CliRunner.h"

#include "SessionReport.h"
#include "ViewModels/MainViewModel.h"

#include <QDir>
#include <QEventLoop>
#include <QJsonDocument>
#include <QUrl>

#include <cstdio>

CliRunner::CliRunner(const CliOptions &options) : m_options(options), m_out(stdout), m_err(stderr)
{}

int CliRunner::run()
{
    MainViewModel viewModel;
    scan(viewModel);
    printScan(viewModel);
    return viewModel.sessions().isEmpty() ? 1 : 0;
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
        SessionReport::writeText(m_out, *session);
    }
    if (viewModel.notice())
        m_out << (first ? "" : "\n") << "Notice: " << *viewModel.notice() << '\n';
    m_out.flush();
}
