// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaObject>
#include <QObject>
#include <QThread>
#include <utility>

// Runs `work` on the thread of `context` (the GUI thread for sessions) and waits for it. From
// that thread itself it runs at once, so a caller there cannot deadlock.
namespace MainThread {

template <typename Work> void call(QObject *context, Work &&work)
{
    if (QThread::currentThread() == context->thread()) {
        std::forward<Work>(work)();
        return;
    }
    QMetaObject::invokeMethod(context, std::forward<Work>(work), Qt::BlockingQueuedConnection);
}

} // namespace MainThread
