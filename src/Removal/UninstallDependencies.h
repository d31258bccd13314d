// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <memory>

class AuthorizationService;
class ProcessService;
class TrashMover;
class UninstallRecorder;

// The operating system as an uninstall sees it; tests replace any of it.
struct UninstallDependencies
{
    std::shared_ptr<const ProcessService> process;
    std::shared_ptr<const AuthorizationService> authorization;
    std::shared_ptr<const TrashMover> trash;
    // Whether this process may write into the folder (macOS isWritableFile).
    std::function<bool(const QString &folder)> isWritable;
    // A fresh recorder for each uninstall (the history journal unless replaced).
    std::function<std::shared_ptr<UninstallRecorder>()> recorder;
};
