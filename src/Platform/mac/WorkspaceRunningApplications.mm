// SPDX-License-Identifier: MIT
#include "WorkspaceRunningApplications.h"

#import <AppKit/AppKit.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <signal.h>
#include <unistd.h>

#if !__has_feature(objc_arc)
#error "WorkspaceRunningApplications.mm is built with ARC (-fobjc-arc)"
#endif

// The objects of the last list(), by process identifier; ARC keeps them alive here.
struct WorkspaceRunningApplications::Listed
{
    std::mutex mutex;
    std::map<qint64, NSRunningApplication *> byProcess;

    NSRunningApplication *find(qint64 processIdentifier)
    {
        std::lock_guard lock(mutex);
        const auto found = byProcess.find(processIdentifier);
        return found == byProcess.end() ? nil : found->second;
    }
};

namespace {
std::optional<QString> textOf(NSString *text)
{
    if (text == nil)
        return std::nullopt;
    return QString::fromNSString(text);
}

// The path of a file URL with "." and ".." folded, as ProcessService compares it.
std::optional<QString> pathOf(NSURL *url)
{
    if (url == nil || !url.isFileURL)
        return std::nullopt;
    return textOf(url.standardizedURL.path);
}

// NSRunningApplication learns of a quit only when the main run loop turns; the process table
// knows at once.
bool processIsGone(qint64 processIdentifier)
{
    return ::kill(pid_t(processIdentifier), 0) != 0 && errno == ESRCH;
}
} // namespace

WorkspaceRunningApplications::WorkspaceRunningApplications() : m_listed(std::make_unique<Listed>())
{}

WorkspaceRunningApplications::~WorkspaceRunningApplications() = default;

QList<RunningApplication> WorkspaceRunningApplications::list() const
{
    QList<RunningApplication> result;
    @autoreleasepool {
        NSArray<NSRunningApplication *> *running = NSWorkspace.sharedWorkspace.runningApplications;
        std::lock_guard lock(m_listed->mutex);
        m_listed->byProcess.clear();
        for (NSRunningApplication *application in running) {
            const qint64 processIdentifier = application.processIdentifier;
            if (processIdentifier <= 0) // -1: an application without a process
                continue;
            m_listed->byProcess[processIdentifier] = application;
            result.append(RunningApplication{
                processIdentifier, textOf(application.bundleIdentifier),
                pathOf(application.bundleURL), pathOf(application.executableURL), 0});
        }
    }
    return result;
}

qint64 WorkspaceRunningApplications::ownProcessIdentifier() const
{
    return NSProcessInfo.processInfo.processIdentifier;
}

void WorkspaceRunningApplications::terminate(const RunningApplication &application)
{
    @autoreleasepool {
        [m_listed->find(application.processIdentifier) terminate];
    }
}

void WorkspaceRunningApplications::forceTerminate(const RunningApplication &application)
{
    @autoreleasepool {
        [m_listed->find(application.processIdentifier) forceTerminate];
    }
}

bool WorkspaceRunningApplications::isTerminated(const RunningApplication &application) const
{
    @autoreleasepool {
        NSRunningApplication *listed = m_listed->find(application.processIdentifier);
        // Not one of ours (never listed): nothing to wait for, as on Linux.
        if (listed == nil || listed.terminated)
            return true;
        return processIsGone(application.processIdentifier);
    }
}
