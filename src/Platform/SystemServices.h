// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class PrivilegedShell;
class RunningApplications;
class SystemLayout;
class TrashMover;

// This platform's own implementations of the small interfaces the services are handed; tests
// hand fakes instead.
namespace SystemServices {

// OsascriptShell on macOS, PkexecShell elsewhere.
[[nodiscard]] std::shared_ptr<const PrivilegedShell> privilegedShell();
// The running-application table of this system.
[[nodiscard]] std::shared_ptr<RunningApplications> runningApplications();
// NSFileManager on a real Mac; a rename into HOME/.Trash elsewhere and on a fake Mac.
[[nodiscard]] std::shared_ptr<const TrashMover> trashMover(const SystemLayout &layout);

} // namespace SystemServices
