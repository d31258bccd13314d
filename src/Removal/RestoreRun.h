// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"
#include "Removal/RestoreMover.h"
#include "Removal/UninstallRecord.h"

#include <QList>
#include <QString>
#include <memory>

class ToolRunner;

// Puts back what one uninstall moved to the Trash: every item still there returns to its
// original path with the rights it was moved with (all administrator items in one run, so one
// prompt), apps are registered again where the platform has a register, and each item put back
// is added to the record. Launch jobs are not loaded again.
class RestoreRun
{
public:
    struct Dependencies
    {
        std::shared_ptr<const RestoreMover> user;  // default: UserRestoreMover
        std::shared_ptr<const RestoreMover> admin; // default: RestoreMover::adminRights
        std::shared_ptr<const ToolRunner> tools;   // runs lsregister
    };

    enum class Outcome {
        restored,
        occupied, // left in the Trash: something is at the original path
        missing,  // no longer in the Trash
        failed,
        canceled,        // the administrator prompt was dismissed
        notMoved,        // the uninstall never moved it (it was interrupted, or the move failed)
        forgotten,       // an installer receipt: forgotten, nothing to move back
        alreadyRestored, // put back by an earlier restore
    };
    struct ItemReport
    {
        UninstallRecord::Item item;
        Outcome outcome = Outcome::failed;
        QString message;

        // What became of the item, as the user reads it ("Put back", "No longer in the Trash").
        [[nodiscard]] QString outcomeText() const;
        // Whether the item is at its place again.
        [[nodiscard]] bool isBack() const
        {
            return outcome == Outcome::restored || outcome == Outcome::alreadyRestored;
        }
    };
    struct Report
    {
        QList<ItemReport> items;
        [[nodiscard]] qsizetype count(Outcome outcome) const;
        // Whether every item the uninstall moved is back.
        [[nodiscard]] bool isComplete() const;
        // One paragraph a user reads after the restore.
        [[nodiscard]] QString summary() const;
    };

    // What the caller leaves out of `dependencies` is the real thing, on the layout.
    explicit RestoreRun(SystemLayout layout, Dependencies dependencies = {});

    // Blocks while the administrator prompt is up; never on the GUI thread.
    [[nodiscard]] Report run(const UninstallRecord &record) const;

    [[nodiscard]] static QString caseName(Outcome outcome);

private:
    void registerApps(const Report &report) const;

    SystemLayout m_layout;
    Dependencies m_dependencies;
};
