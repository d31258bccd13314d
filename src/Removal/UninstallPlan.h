// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileItem.h"
#include "Models/UninstallSession.h"

#include <QList>
#include <QSharedPointer>

// What the uninstall does with one session's selected items. Every selected item lands in
// exactly one of the first four lists; the last two tell what happened to it.
struct UninstallPlan
{
    QSharedPointer<UninstallSession> session;
    QList<FileItem> protectedFiles; // skipped: protected or part of the operating system
    QList<FileItem> trashFiles;     // moved with the user's own rights
    QList<FileItem> adminFiles;     // moved by the privileged script
    QList<FileItem> receipts;       // installer receipts whose package is forgotten
    QList<FileItem> removed;
    QList<FileItem> failed;
};
