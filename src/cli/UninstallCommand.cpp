// SPDX-License-Identifier: MIT
#include "UninstallCommand.h"

#include "Models/ByteCountFormatter.h"
#include "ViewModels/MainViewModel.h"

#include <QEventLoop>

#include <cstdio>
#include <unistd.h>

UninstallCommand::UninstallCommand(const CliOptions &options, QTextStream &out, QTextStream &err)
    : m_options(options), m_out(out), m_err(err), m_log(options.json ? err : out)
{}

int UninstallCommand::run(MainViewModel &viewModel)
{
    if (!viewModel.canUninstall()) {
        m_log << "Nothing is selected to move to the Trash.\n";
        m_log.flush();
        return 0;
    }
    switch (confirm(viewModel)) {
    case Answer::cannotAsk:
        m_err << "quenzo-cli: not moving anything without confirmation; standard input is not "
                 "a terminal (pass --yes to confirm)\n";
        m_err.flush();
        return 2;
    case Answer::no:
        m_log << "Nothing was moved.\n";
        m_log.flush();
        return 1;
    case Answer::yes:
        break;
    }
    uninstallAndWait(viewModel);
    printSummaries(viewModel);
    const auto &sessions = viewModel.sessions();
    return std::any_of(sessions.cbegin(), sessions.cend(),
                       [](const auto &session) { return session->failedCount() > 0; })
               ? 1
               : 0;
}

UninstallCommand::Answer UninstallCommand::confirm(const MainViewModel &viewModel)
{
    if (m_options.yes)
        return Answer::yes;
    if (!isatty(STDIN_FILENO))
        return Answer::cannotAsk;
    m_log << "\nMove " << viewModel.selectedFilesCount() << " files ("
          << formattedByteCount(viewModel.totalSize()) << ") to the Trash? [y/N] ";
    m_log.flush();
    QTextStream in(stdin);
    const QString answer = in.readLine().trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes") ? Answer::yes
                                                                          : Answer::no;
}

void UninstallCommand::uninstallAndWait(MainViewModel &viewModel)
{
    QEventLoop loop;
    QObject::connect(&viewModel, &MainViewModel::stateChanged, &loop, [&] {
        if (viewModel.isCompleted())
            loop.quit();
    });
    m_log << '\n';
    viewModel.uninstall();
    // Only the sessions that take part are still listed. Their first line is written from the
    // background task through this thread's event loop, so nothing is missed by connecting now.
    for (const auto &session : viewModel.sessions()) {
        const QString name = session->appInfo().displayName();
        QObject::connect(
            session.get(), &UninstallSession::logAdded, &loop, [this, name](const LogEntry &entry) {
                m_log << (entry.isSuccess ? "" : "! ") << name << ": " << entry.message << '\n';
                m_log.flush();
            });
    }
    if (!viewModel.isCompleted())
        loop.exec();
}

void UninstallCommand::printSummaries(const MainViewModel &viewModel)
{
    if (m_options.json)
        return; // the counters are part of the JSON report
    m_out << '\n';
    for (const auto &session : viewModel.sessions()) {
        m_out << session->appInfo().displayName() << ": " << session->removedCount()
              << " moved to the Trash (" << formattedByteCount(session->removedBytes()) << "), "
              << session->failedCount() << " failed\n";
    }
    m_out.flush();
}
