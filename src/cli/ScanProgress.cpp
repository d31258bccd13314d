// SPDX-License-Identifier: MIT
#include "ScanProgress.h"

#include <QMutexLocker>

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {
int terminalWidth()
{
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return 80;
}

// "\r" and erase-line: the status replaces itself instead of scrolling.
void writeLine(const QString &text)
{
    const QByteArray bytes = "\r\033[K" + text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}
} // namespace

std::shared_ptr<ScanProgress> ScanProgress::forTerminal()
{
    if (!isatty(STDERR_FILENO))
        return nullptr;
    return std::shared_ptr<ScanProgress>(new ScanProgress);
}

FileDiscoveryService::Progress ScanProgress::callback(std::shared_ptr<ScanProgress> self)
{
    if (!self)
        return {};
    return
        [self](const QString &appName, const QString &location) { self->show(appName, location); };
}

void ScanProgress::show(const QString &appName, const QString &location)
{
    QString text = QStringLiteral("Scanning %1: %2").arg(appName, location);
    // One line, never wrapped: a wrapped status could not be rewritten in place.
    const int width = terminalWidth() - 1;
    if (text.size() > width)
        text = text.left(qMax(0, width - 1)) + QChar(0x2026);
    const QMutexLocker lock(&m_mutex);
    if (m_finished)
        return;
    writeLine(text);
    m_shown = true;
}

void ScanProgress::finish()
{
    const QMutexLocker lock(&m_mutex);
    if (m_shown)
        writeLine({});
    m_finished = true;
}
