// SPDX-License-Identifier: MIT
// quenzo-privileged-helper: started as root through the one administrator prompt of an
// uninstall, once per batch. Arguments: --root ROOT --home HOME --user UID --batch-sha256 HEX
// [--batch FILE];
// the batch (HelperBatch commands) comes from FILE or, without it, from standard input. One
// result record per command goes to standard output. Exit status 0 once the batch was read.
#include "Platform/HelperBatch.h"
#include "Platform/SafeFile.h"
#include "Platform/SystemLayout.h"
#include "Platform/ToolRunner.h"
#include "Platform/TrustedProgram.h"
#include "Removal/PrivilegedHelper.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QHash>

#include <cstdio>
#include <pwd.h>
#include <unistd.h>

namespace {
// No batch of a real uninstall comes near this (5,000 items are well under a megabyte).
constexpr qint64 kMaximumBatch = qint64(256) << 20;

int refuse(const char *why)
{
    std::fprintf(stderr, "quenzo-privileged-helper: %s\n", why);
    return 2;
}

std::optional<QByteArray> readStandardInput()
{
    QByteArray bytes;
    char buffer[65536];
    size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) {
        bytes.append(buffer, qsizetype(count));
        if (bytes.size() > kMaximumBatch)
            return std::nullopt;
    }
    return std::ferror(stdin) ? std::nullopt : std::optional<QByteArray>(bytes);
}

// The user whose Trash receives the items. pkexec names the user who authenticated; without
// it (osascript's shell, or a caller that already is root) the claim is only believed when the
// caller is root or the claimed user itself. The home and the Trash must belong to that user
// in any case, which LinkProofMove checks.
std::optional<uid_t> verifiedUser(const QByteArray &claimed)
{
    bool isNumber = false;
    const qulonglong user = claimed.toULongLong(&isNumber);
    if (!isNumber || user > qulonglong(uid_t(-1)))
        return std::nullopt;
    if (const QByteArray pkexec = qgetenv("PKEXEC_UID"); !pkexec.isEmpty())
        return pkexec == claimed ? std::optional<uid_t>(uid_t(user)) : std::nullopt;
    if (::getuid() != 0 && ::getuid() != uid_t(user))
        return std::nullopt;
    return uid_t(user);
}
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QHash<QByteArray, QByteArray> options;
    const QList<QByteArray> known{"--root", "--home", "--user", "--batch", "--batch-sha256"};
    for (int i = 1; i < argc; i += 2) {
        if (i + 1 >= argc || !known.contains(argv[i]) || options.contains(argv[i]))
            return refuse("usage: --root ROOT --home HOME --user UID --batch-sha256 HEX "
                          "[--batch FILE]");
        options.insert(argv[i], argv[i + 1]);
    }
    const QByteArray root = options.value("--root");
    const QByteArray home = options.value("--home");
    if (!root.startsWith('/') || !home.startsWith('/'))
        return refuse("the root and the home must be absolute paths");
    const auto owner = verifiedUser(options.value("--user"));
    if (!owner)
        return refuse("the user does not match the one who authenticated");
    // As root, everything under the root is believed (its tools, its fake per-user folders):
    // a root other than "/" must be one only root could have laid out. On the real disk the
    // home is the user's own, and root's only for a caller that already is root.
    if (::geteuid() == 0 && root != "/") {
        if (const QString refusal = TrustedProgram::folderRefusal(QFile::decodeName(root));
            !refusal.isEmpty())
            return refuse(qPrintable(refusal));
    } else if (::geteuid() == 0) {
        const passwd *account = ::getpwuid(*owner);
        if (!account || home != account->pw_dir || (*owner == 0 && ::getuid() != 0))
            return refuse("the home is not the user's own");
    }
    const QByteArray batchFile = options.value("--batch");
    const auto bytes = batchFile.isEmpty()
                           ? readStandardInput()
                           : SafeFile::read(batchFile, kMaximumBatch, SafeFile::Links::refuse);
    // The digest came with the arguments the user approved; the batch file stayed writable by
    // the user's programs while the prompt was up.
    const QByteArray digest = options.value("--batch-sha256");
    if (bytes &&
        (digest.size() != 64 ||
         QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex() != digest.toLower()))
        return refuse("the batch is not the one that was approved");
    const auto commands = bytes ? HelperBatch::parseCommands(*bytes) : std::nullopt;
    if (!commands)
        return refuse("the batch is malformed");
    const ToolRunner tools;
    const PrivilegedHelper helper(SystemLayout(QFile::decodeName(root), QFile::decodeName(home)),
                                  *owner, tools);
    const QByteArray results = HelperBatch::encode(helper.run(*commands));
    std::fwrite(results.constData(), 1, size_t(results.size()), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
