// SPDX-License-Identifier: MIT
#pragma once

#include "FakeMac.h"

#include <QString>
#include <QStringList>

// The tools an uninstall runs, as stand-ins inside a fake Mac, and an app that really runs.
// Every stand-in records its call (see FakeMac::calls()).
class FakeMacRemovalTools
{
public:
    FakeMacRemovalTools() = delete;

    // /bin/launchctl, /usr/bin/defaults and lsregister (what Quenzo moves, it moves itself).
    static void install(FakeMac &mac);
    // The launchd jobs (real paths of their plists) that launchctl reports as loaded: unload
    // and bootout succeed for them once; any other path fails with launchctl's message.
    static void setLoadedJobs(FakeMac &mac, const QStringList &plistPaths);
    // The message the launchctl stand-in gives for a job that is not loaded.
    [[nodiscard]] static QString notLoadedMessage();
    // An app bundle whose main executable is a copy of a real program (sleep), so a test can
    // start it and see it quit. Returns the real path of the executable.
    static QString addRunnableApp(FakeMac &mac, const QString &bundleMacPath,
                                  const QString &identifier);
};
