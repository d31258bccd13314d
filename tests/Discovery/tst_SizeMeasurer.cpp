// SPDX-License-Identifier: MIT
#include "Discovery/SizeMeasurer.h"
#include "fakemac/FakeMac.h"
#include "support/UnprivilegedFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

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
};

void tst_SizeMeasurer::measures()
{
    // Read as a user below: the way down must be open to others, whatever the umask.
    ::umask(022);
    QTemporaryDir dir;
    const auto open = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                      QFileDevice::ReadOther | QFileDevice::ExeOther;
    QVERIFY(QFile::setPermissions(dir.path(), open));
    FakeMac mac(dir.path());
    const QString big = mac.addFile(u"/data/big.bin"_s, 50'000'000);
    const QString item = u"/t/App.bundle"_s;
    mac.addFile(item + u"/Contents/a"_s, 1000);
    mac.addFile(item + u"/.hidden"_s, 200);
    mac.addFile(item + u"/Contents/deep/er/b"_s, 30);
    // At the name and path limits: a 255-byte name, a path past 1000 bytes.
    mac.addFile(item + u'/' + FakeMac::longestName(u"entry-"_s), 300);
    QVERIFY(mac.addFile(mac.deepBelow(item) + u"/leaf"_s, 700).toUtf8().size() > 1000);
    qint64 links = 0;
    for (const auto &[name, target] : {std::pair{u"/big"_s, big},
                                       {u"/data"_s, mac.path(u"/data"_s)},
                                       {u"/.gone"_s, mac.path(u"/nowhere/at/all"_s)},
                                       {u"/Contents/self"_s, u"."_s},
                                       {u"/Contents/up"_s, u".."_s},
                                       {u"/a"_s, u"b"_s},
                                       {u"/b"_s, u"a"_s}})
        links += ownSize(mac.addSymlink(item + name, target));
    // Neither a file nor a link: adds nothing.
    QCOMPARE(::mkfifo(QFile::encodeName(mac.path(item + u"/Contents/pipe"_s)).constData(), 0600),
             0);
    // What the user cannot read adds nothing either.
    mac.addFile(item + u"/Locked/hidden"_s, 5000);
    const QString empty = mac.addFolder(u"/t/Empty"_s);
    mac.addFolder(u"/t/Nested/a/b"_s);
    QVERIFY(QFile::setPermissions(mac.path(item + u"/Locked"_s), QFileDevice::WriteOwner));
    const qint64 size = [&] {
        const UnprivilegedFiles asUser;
        return SizeMeasurer::itemSize(mac.path(item));
    }();
    QVERIFY(QFile::setPermissions(mac.path(item + u"/Locked"_s), open));

    // Files and links below, never what the links point at, nor loops; folders add nothing.
    QCOMPARE(size, 1000 + 200 + 30 + 300 + 700 + links);
    QCOMPARE(SizeMeasurer::itemSize(big), 50'000'000);
    // A link as the item measures the link, even when it points at a folder.
    const QString linkToDir = mac.path(item + u"/data"_s);
    QCOMPARE(SizeMeasurer::itemSize(linkToDir), ownSize(linkToDir));
    QVERIFY(ownSize(linkToDir) < 1000);
    // An empty folder (or one holding only folders) measures itself, not 0.
    QVERIFY(ownSize(empty) > 0);
    QCOMPARE(SizeMeasurer::itemSize(empty), ownSize(empty));
    QCOMPARE(SizeMeasurer::itemSize(mac.path(u"/t/Nested"_s)), ownSize(mac.path(u"/t/Nested"_s)));
    QCOMPARE(SizeMeasurer::itemSize(mac.path(u"/t/missing"_s)), 0);
}

QTEST_GUILESS_MAIN(tst_SizeMeasurer)
#include "tst_SizeMeasurer.moc"
