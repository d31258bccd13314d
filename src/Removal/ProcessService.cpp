// SPDX-License-Identifier: MIT
#include "ProcessService.h"

#include "Platform/RunningApplications.h"
#include "Platform/SystemServices.h"
#include "Platform/ToolRunner.h"
#include "Platform/TrustedProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>
#include <QThread>

#include <unistd.h>

namespace {
constexpr std::chrono::milliseconds kPollInterval{500};
constexpr int kPolls = 10;

// The bundle as written and, where a link leads to it, as the kernel names executables.
QStringList bundlePaths(const QString &bundlePath)
{
    QStringList paths{QDir::cleanPath(bundlePath)};
    const QString canonical = QFileInfo(bundlePath).canonicalFilePath();
    if (!canonical.isEmpty() && !paths.contains(canonical))
        paths.append(canonical);
    return paths;
}

// Only the app's own code counts: a program that merely lies somewhere below the bundle's
// folder (a dropped link may point at a folder holding other apps) is not the app.
bool isOwnCode(const std::optional<QString> &executable, const QStringList &bundles)
{
    if (!executable)
        return false;
    const QString standardized = QDir::cleanPath(*executable);
    return std::any_of(bundles.cbegin(), bundles.cend(), [&](const QString &bundle) {
        return standardized.startsWith(bundle + QStringLiteral("/Contents/"));
    });
}

bool belongsToBundle(const RunningApplication &application, const QString &bundleIdentifier,
                     const QStringList &bundles)
{
    if (application.bundleIdentifier && *application.bundleIdentifier == bundleIdentifier)
        return true;
    if (application.bundlePath && (bundles.contains(QDir::cleanPath(*application.bundlePath)) ||
                                   isOwnCode(application.bundlePath, bundles)))
        return true;
    return isOwnCode(application.executablePath, bundles);
}

QString decodedOutput(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString() : text.trimmed();
}
} // namespace

ProcessService::ProcessService(SystemLayout layout, Dependencies dependencies)
    : m_layout(std::move(layout)), m_dependencies(std::move(dependencies))
{
    if (!m_dependencies.applications)
        m_dependencies.applications = SystemServices::runningApplications();
    if (!m_dependencies.tools)
        m_dependencies.tools = std::make_shared<const ToolRunner>();
    if (!m_dependencies.sleep)
        m_dependencies.sleep = [](std::chrono::milliseconds duration) {
            QThread::msleep(static_cast<unsigned long>(duration.count()));
        };
}

std::optional<UninstallError> ProcessService::quitApp(const QString &bundleIdentifier,
                                                      const QString &bundlePath) const
{
    const QStringList bundles = bundlePaths(bundlePath);
    RunningApplications &applications = *m_dependencies.applications;
    const qint64 self = applications.ownProcessIdentifier();
    QList<RunningApplication> kept;
    for (const RunningApplication &application : applications.list()) {
        if (application.processIdentifier != self &&
            belongsToBundle(application, bundleIdentifier, bundles))
            kept.append(application);
    }
    if (kept.isEmpty())
        return UninstallError::appNotRunning();
    for (const RunningApplication &application : std::as_const(kept)) {
        applications.terminate(application);
        if (waitUntilTerminated(application, kPolls))
            continue;
        applications.forceTerminate(application);
        m_dependencies.sleep(kPollInterval);
        if (!applications.isTerminated(application))
            return UninstallError::failedToQuitApp();
    }
    return std::nullopt;
}

bool ProcessService::waitUntilTerminated(const RunningApplication &application, int polls) const
{
    for (int slept = 0; !m_dependencies.applications->isTerminated(application); ++slept) {
        if (slept == polls)
            return false;
        m_dependencies.sleep(kPollInterval);
    }
    return true;
}

std::optional<UninstallError> ProcessService::unloadLaunchItem(const QString &path) const
{
    const ProcessOutput result =
        run(m_layout.path(QStringLiteral("/bin/launchctl")), {QStringLiteral("unload"), path});
    if (result.status == 0)
        return std::nullopt;
    return UninstallError::failedToUnloadLaunchItem(
        result.output.isEmpty() ? QStringLiteral("Unknown error") : result.output);
}

ProcessOutput ProcessService::run(const QString &executable, const QStringList &arguments) const
{
    // Already root, a tool of a fake Mac (a folder anyone might have laid out) runs only when
    // only root could have changed it.
    if (::geteuid() == 0 && m_layout.isFakeRoot() && m_layout.macPath(executable)) {
        if (const QString refusal = TrustedProgram::refusal(executable); !refusal.isEmpty())
            return ProcessOutput{-1, refusal};
    }
    const ToolResult result =
        m_dependencies.tools->run(executable, arguments, ToolRunner::ErrorOutput::merge);
    if (result.exitStatus == -1 && !result.errorText.isEmpty())
        return ProcessOutput{-1, result.errorText};
    return ProcessOutput{result.exitStatus, decodedOutput(result.output)};
}
