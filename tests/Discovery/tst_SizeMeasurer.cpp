// SPDX-License-Identifier: MIT
#include "Discovery/SizeMeasurer.h"
#include "fakemac/FakeMac.h"
#include "support/UnprivilegedFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {
qint64 ownSize(const QString &path)
{
    struct stat info
    {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? qint64(info.st_size) : -1;
}
} // namespace

class tst_SizeMeasurer : public QObject
{
    Q_OBJECT

private slots:
    void measures();
    void unreadablePartsAddNothing();
};

void tst_SizeMeasurer::measures()
{
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    const QString big = mac.addFile(QStringLiteral("/data/big.bin"), 50'000'000);
    mac.addFile(QStringLiteral("/t/App.bundle/Contents/a"), 1000);
    mac.addFile(QStringLiteral("/t/App.bundle/.hidden"), 200);
    mac.addFile(QStringLiteral("/t/App.bundle/Contents/deep/er/b"), 30);
    const QString linkToBig = mac.addSymlink(QStringLiteral("/t/App.bundle/big"), big);
    const QString linkToDir =
        mac.addSymlink(QStringLiteral("/t/App.bundle/data"), mac.path(QStringLiteral("/data")));
    const QString dangling = mac.addSymlink(QStringLiteral("/t/App.bundle/.gone"),
                                            mac.path(QStringLiteral("/nowhere/at/all")));
    // Neither a file nor a link: adds nothing.
    QCOMPARE(
        ::mkfifo(
            QFile::encodeName(mac.path(QStringLiteral("/t/App.bundle/Contents/pipe"))).constData(),
            0600),
        0);
    const QString empty = mac.addFolder(QStringLiteral("/t/Empty"));
    mac.addFolder(QStringLiteral("/t/Nested/a/b"));
    const QString bundle = mac.path(QStringLiteral("/t/App.bundle"));

    // Files and links below, never what the links point at; folders add nothing.
    QCOMPARE(SizeMeasurer::itemSize(bundle),
             1000 + 200 + 30 + ownSize(linkToBig) + ownSize(linkToDir) + ownSize(dangling));
    QCOMPARE(SizeMeasurer::itemSize(big), 50'000'000);
    // A link as the item measures the link, even when it points at a folder.
    QCOMPARE(SizeMeasurer::itemSize(linkToBig), ownSize(linkToBig));
    QCOMPARE(SizeMeasurer::itemSize(linkToDir), ownSize(linkToDir));
    QVERIFY(ownSize(linkToDir) < 1000);
    // An empty folder (or one holding only folders) measures itself, not 0.
    QVERIFY(ownSize(empty) > 0);
    QCOMPARE(SizeMeasurer::itemSize(empty), ownSize(empty));
    QCOMPARE(SizeMeasurer::itemSize(mac.path(QStringLiteral("/t/Nested"))),
             ownSize(mac.path(QStringLiteral("/t/Nested"))));
    QCOMPARE(SizeMeasurer::itemSize(mac.path(QStringLiteral("/t/missing"))), 0);
}

void tst_SizeMeasurer::unreadablePartsAddNothing()
{
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    mac.addFile(QStringLiteral("/t/Item/readable"), 700);
    mac.addFile(QStringLiteral("/t/Item/Locked/hidden"), 5000);
    // Whatever the umask: the way down to the item is open to others.
    const auto open = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                      QFileDevice::ReadOther | QFileDevice::ExeOther;
    for (const QString &folder :
         {dir.path(), mac.path(QStringLiteral("/t")), mac.path(QStringLiteral("/t/Item"))})
        QVERIFY(QFile::setPermissions(folder, open));
    const QString locked = mac.path(QStringLiteral("/t/Item/Locked"));
    QVERIFY(QFile::setPermissions(locked, QFileDevice::WriteOwner));
    const qint64 size = [&] {
        const UnprivilegedFiles asUser;
        return SizeMeasurer::itemSize(mac.path(QStringLiteral("/t/Item")));
    }();
    QFile::setPermissions(locked,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QCOMPARE(size, 700);
}

QTEST_GUILESS_MAIN(tst_SizeMeasurer)
#include "tst_SizeMeasurer.moc"
