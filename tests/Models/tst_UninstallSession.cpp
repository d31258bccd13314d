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
        QSignalSpy willChange(&session, &UninstallSession::willChange);
        QSignalSpy fileChanged(&session, &UninstallSession::fileChanged);

        FileItem staleCopy = a;
        staleCopy.isSelected = false; // the passed flag is not used
        session.toggleFileSelection(staleCopy);
        QCOMPARE(selection(session), (QList<bool>{false, true}));
        QCOMPARE(willChange.count(), 1);
        QCOMPARE(fileChanged.takeFirst().at(0).toInt(), 0);

        session.toggleFileSelection(item(FileCategory::caches, 10)); // not listed
        QCOMPARE(willChange.count(), 1);
        QCOMPARE(selection(session), (QList<bool>{false, true}));
    }

    void selectionOperationsChangeOneItemAtATime()
    {
        UninstallSession session(AppInfo{});
        FileItem protectedItem = item(FileCategory::application, 5, false);
        protectedItem.isProtected = true;
        session.setDiscoveredFiles({item(FileCategory::caches, 1, false), protectedItem,
                                    item(FileCategory::logs, 2, false),
                                    item(FileCategory::caches, 4, false)});
        QSignalSpy willChange(&session, &UninstallSession::willChange);

        session.selectAll(FileCategory::caches);
        QCOMPARE(selection(session), (QList<bool>{true, false, false, true}));
        QCOMPARE(willChange.count(), 2);

        session.deselectAll(FileCategory::helperTools);
        QCOMPARE(willChange.count(), 2);

        session.setAllSelected(true);
        QCOMPARE(selection(session), (QList<bool>{true, true, true, true})); // protected ones too
        QCOMPARE(willChange.count(), 6);
        QCOMPARE(session.totalSize(), 12);
        QCOMPARE(session.selectedFilesCount(), 4);

        session.deselectAll(FileCategory::caches);
        QCOMPARE(session.totalSize(), 7);
        session.setAllSelected(false);
        QCOMPARE(session.totalSize(), 0);
        QCOMPARE(session.selectedFilesCount(), 0);
    }

    void totalSizeNeverWraps()
    {
        UninstallSession session(AppInfo{});
        const qint64 huge = std::numeric_limits<qint64>::max() - 1;
        session.setDiscoveredFiles(
            {item(FileCategory::caches, huge), item(FileCategory::caches, huge)});
        QCOMPARE(session.totalSize(), std::numeric_limits<qint64>::max());
    }
};

QTEST_GUILESS_MAIN(TestUninstallSession)
#include "tst_UninstallSession.moc"
