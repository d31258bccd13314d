// SPDX-License-Identifier: MIT
#include "TreeFingerprint.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace {
// The link's own text, not the absolute path it resolves to.
QByteArray linkText(const QString &path)
{
    QByteArray buffer(4096, '\0');
    const ssize_t length =
        ::readlink(QFile::encodeName(path).constData(), buffer.data(), size_t(buffer.size()));
    return length < 0 ? QByteArray() : buffer.left(length);
}
} // namespace

QByteArray TreeFingerprint::of(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (info.isSymLink()) {
        hash.addData("link:" + linkText(path));
    } else if (info.isDir()) {
        hash.addData("folder:");
        const QStringList names = QDir(path).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString &name : names)
            hash.addData(name.toUtf8() + '\0' + of(path + u'/' + name));
    } else {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return "unreadable";
        hash.addData("file:");
        hash.addData(&file);
    }
    return hash.result().toHex();
}

QStringList TreeFingerprint::entries(const QString &root)
{
    QStringList result;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        result.append(QDir(root).relativeFilePath(it.next()));
    result.sort();
    return result;
}
