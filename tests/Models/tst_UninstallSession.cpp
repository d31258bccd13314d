// SPDX-License-Identifier: MIT
#include "Models/UninstallSession.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
FileItem item(FileCategory category, qint64 size, bool selected = true)
{
    FileItem file;
    file.path = u"/tmp/"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    file.category = category;
    file.size = size;
    file.isSelected = selected;
    return file;
}

QList<bool> selection(const UninstallSession &session)
{
    QList<bool> flags;
    for (const FileItem &file : session.discoveredFiles())
        flags.append(file.isSelected);
    return flags;
}
} // namespace

class TestUninstallSession : public QObject
{
    Q_OBJECT

private slots:
    void toggleInvertsTheStoredFlagOfTheSameItem()
    {
        UninstallSession session(AppInfo{});
        const FileItem a = item(FileCategory::caches, 10);
        session.setDiscoveredFiles({a, item(FileCategory::logs, 20)});
        QSignalSpy fileChanged(&session, &UninstallSession::fileChanged);
        FileItem staleCopy = a;
        staleCopy.isSelected = false; // the passed flag is not used
        session.toggleFileSelection(staleCopy);
        session.toggleFileSelection(item(FileCategory::caches, 10)); // not listed
        QCOMPARE(selection(session), (QList<bool>{false, true}));
        QCOMPARE(fileChanged.size(), 1);
        QCOMPARE(fileChanged.at(0).at(0).toInt(), 0);
    }

    void selectionCountsAndTotals()
    {
        UninstallSession session(AppInfo{});
        FileItem protectedItem = item(FileCategory::application, 5, false);
        protectedItem.isProtected = true;
        session.setDiscoveredFiles({item(FileCategory::caches, 1, false), protectedItem,
                                    item(FileCategory::logs, 2, false),
                                    item(FileCategory::caches, 4, false)});
        QSignalSpy willChange(&session, &UninstallSession::willChange);
        session.selectAll(FileCategory::caches);
        session.deselectAll(FileCategory::helperTools);
        QCOMPARE(selection(session), (QList<bool>{true, false, false, true}));
        QCOMPARE(willChange.size(), 2); // one per item written
        QCOMPARE(session.selectedFilesCount(), 2);
        session.setAllSelected(true);
        QCOMPARE(session.totalSize(), 12); // protected ones too
        QCOMPARE(session.selectedFilesCount(), 4);
        session.deselectAll(FileCategory::caches);
        QCOMPARE(session.totalSize(), 7);
        session.setAllSelected(false);
        QCOMPARE(session.totalSize(), 0);
        QCOMPARE(session.selectedFilesCount(), 0);
        // The total saturates instead of wrapping.
        const qint64 huge = std::numeric_limits<qint64>::max() - 1;
        session.setDiscoveredFiles(
            {item(FileCategory::caches, huge), item(FileCategory::logs, huge)});
        QCOMPARE(session.totalSize(), std::numeric_limits<qint64>::max());
    }
};

QTEST_GUILESS_MAIN(TestUninstallSession)
#include "tst_UninstallSession.moc"
