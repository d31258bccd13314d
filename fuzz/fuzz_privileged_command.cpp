// SPDX-License-Identifier: MIT
// The one line Quenzo hands to a root shell, composed from paths and package identifiers that
// other programs chose. For arbitrary input this checks properties, not only crashes:
//  - each command names only what the path policy allows, and moves only directly into the
//    Trash (an independent model of the rules predicts the exact list of calls);
//  - /bin/sh reading the line, with stand-ins for mv, launchctl and pkgutil that print their
//    arguments, runs exactly the predicted calls with exactly the predicted words;
//  - the AppleScript literal, unescaped by a reference unescaper, gives back the exact line.
#include "Platform/SystemLayout.h"
#include "Services/AdminPathPolicy.h"
#include "Services/AuthorizationService.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using Call = QList<QByteArray>;

[[noreturn]] void fail(const char *what, const QString &detail)
{
    std::fprintf(stderr, "property violated: %s\n%s\n", what, qPrintable(detail));
    std::abort();
}

// A fake Mac whose root and home hold a blank and a quote, so the tools' own paths need
// quoting too. Each stand-in appends its argument count, $0 and its arguments, NUL-terminated.
struct Scene
{
    QTemporaryDir dir{QDir::tempPath() + QStringLiteral("/quenzo fuzz 'root' XXXXXX")};
    QString root;
    QString callsFile;
    QStringList prefixes;

    Scene()
    {
        root = QDir(dir.path()).canonicalPath();
        QDir(root).mkpath(QStringLiteral("Users/tester/.Trash"));
        QDir(root).mkpath(QStringLiteral(".fakemac"));
        write(QStringLiteral("/.fakemac/darwin-user-dirs"),
              (root + QStringLiteral("/private/var/folders/zz/x1/C/\n") + root +
               QStringLiteral("/private/var/folders/zz/x1/T/\n"))
                  .toUtf8());
        const QByteArray stub = "#!/bin/sh\nprintf '%s\\0' \"$#\" \"$0\" \"$@\" >>\"$CALLS\"\n";
        for (const char *tool : {"/bin/mv", "/bin/launchctl", "/usr/sbin/pkgutil"}) {
            const QString path = root + QLatin1String(tool);
            QDir().mkpath(QFileInfo(path).path());
            write(QLatin1String(tool), stub);
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        SystemLayout::set(root, root + QStringLiteral("/Users/tester"));
        callsFile = root + QStringLiteral("/.fakemac/calls");
        const QString home = SystemLayout::home();
        prefixes = {QString(),
                    QStringLiteral("/"),
                    root + QLatin1Char('/'),
                    root + QStringLiteral("/Applications/"),
                    root + QStringLiteral("/Library/LaunchDaemons/"),
                    root + QStringLiteral("/Library/Application Support/"),
                    root + QStringLiteral("/Library/Application Support/Apple/"),
                    root + QStringLiteral("/Library/Preferences/SystemConfiguration/"),
                    root + QStringLiteral("/private/var/folders/zz/x1/C/"),
                    home + QStringLiteral("/Library/"),
                    home + QStringLiteral("/Library/Caches/"),
                    home + QStringLiteral("/Library/Keychains/"),
                    AdminPathPolicy::trashDirectory() + QLatin1Char('/'),
                    AdminPathPolicy::trashDirectory()};
    }

    void write(const QString &macPath, const QByteArray &bytes) const
    {
        QFile file(root + macPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }
};

// Text of any kind: UTF-8 (invalid sequences become U+FFFD) or raw UTF-16 code units, which
// may hold lone surrogates.
QString fuzzedText(FuzzedDataProvider &input)
{
    const bool asUtf16 = input.ConsumeBool();
    const std::string bytes = input.ConsumeRandomLengthString(48);
    if (!asUtf16)
        return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    QString text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2)
        text.append(QChar(char16_t(quint8(bytes[i]) | (quint8(bytes[i + 1]) << 8))));
    return text;
}

QString fuzzedPath(FuzzedDataProvider &input, const QStringList &prefixes)
{
    const QString prefix =
        prefixes.at(input.ConsumeIntegralInRange<qsizetype>(0, prefixes.size() - 1));
    return prefix + fuzzedText(input);
}

// Anything a terminal or a shell could take for something other than a plain character.
bool isSuspicious(QChar c)
{
    const char16_t u = c.unicode();
    return u < 0x20 || (u >= 0x7F && u <= 0x9F) || u == 0x2028 || u == 0x2029 ||
           c.category() == QChar::Other_Format;
}

bool isPlainText(const QString &text)
{
    return text.isValidUtf16() && std::none_of(text.cbegin(), text.cend(), isSuspicious);
}

// The model's reading of "directly inside the Trash": one plain, non-empty name that is
// neither "." nor "..", right below the Trash folder.
bool isDirectlyInTrash(const QString &destination)
{
    const QString trash = AdminPathPolicy::trashDirectory() + QLatin1Char('/');
    if (!destination.startsWith(trash) || !isPlainText(destination))
        return false;
    const QString name = destination.mid(trash.size());
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && name != QLatin1String(".") &&
           name != QLatin1String("..");
}

// Beyond what the policy says: an allowed path is plain text, lies below the fake Mac's root
// and holds no empty, "." or ".." component.
void checkAllowedPath(const QString &path, const QString &root)
{
    if (!isPlainText(path) || !path.startsWith(root + QLatin1Char('/')))
        fail("allowed path is not a plain path under the root", path);
    const QStringList components = path.mid(1).split(QLatin1Char('/'));
    for (const QString &component : components) {
        if (component.isEmpty() || component == QLatin1String(".") ||
            component == QLatin1String(".."))
            fail("allowed path is not clean", path);
    }
}

QByteArray tool(const char *macPath)
{
    return SystemLayout::path(QLatin1String(macPath)).toUtf8();
}

QList<Call> expectedCalls(const QList<AuthorizationService::Move> &moves,
                          const QStringList &daemons, const QStringList &ids, const QString &root)
{
    QList<Call> calls;
    for (const QString &plist : daemons) {
        if (!AdminPathPolicy::isAllowed(plist))
            continue;
        checkAllowedPath(plist, root);
        calls.append({tool("/bin/launchctl"), "bootout", "system", plist.toUtf8()});
    }
    for (const QString &id : ids) {
        if (!AdminPathPolicy::isValidPackageID(id))
            continue;
        if (!isPlainText(id) || id.startsWith(QLatin1Char('-')) || id.contains(QLatin1Char('/')))
            fail("package identifier passed the policy", id);
        calls.append({tool("/usr/sbin/pkgutil"), "--forget", id.toUtf8()});
    }
    for (const AuthorizationService::Move &move : moves) {
        if (!AdminPathPolicy::isAllowed(move.source) || !isDirectlyInTrash(move.destination))
            continue;
        checkAllowedPath(move.source, root);
        calls.append(
            {tool("/bin/mv"), "-n", "--", move.source.toUtf8(), move.destination.toUtf8()});
    }
    return calls;
}

// Reads back an AppleScript string literal: only \\ and \" are escapes, a bare quote ends it.
std::optional<QString> unescapeAppleScript(const QString &source)
{
    const QString head = QStringLiteral("do shell script \"");
    const QString tail = QStringLiteral("\" with administrator privileges");
    if (!source.startsWith(head) || !source.endsWith(tail) ||
        source.size() < head.size() + tail.size())
        return std::nullopt;
    const QString body = source.mid(head.size(), source.size() - head.size() - tail.size());
    QString text;
    for (qsizetype i = 0; i < body.size(); ++i) {
        if (body[i] == QLatin1Char('"'))
            return std::nullopt;
        if (body[i] == QLatin1Char('\\')) {
            if (++i == body.size() || (body[i] != QLatin1Char('\\') && body[i] != QLatin1Char('"')))
                return std::nullopt;
        }
        text.append(body[i]);
    }
    return text;
}

QList<Call> parseCalls(const QByteArray &log)
{
    QList<QByteArray> fields = log.split('\0');
    if (!fields.isEmpty() && fields.last().isEmpty())
        fields.removeLast();
    QList<Call> calls;
    for (qsizetype at = 0; at < fields.size();) {
        const int count = fields[at].toInt();
        if (at + 2 + count > fields.size())
            fail("stand-in log is cut short", QString::fromUtf8(log));
        calls.append(fields.mid(at + 1, count + 1));
        at += 2 + count;
    }
    return calls;
}

QString describe(const QList<Call> &calls)
{
    QStringList lines;
    for (const Call &call : calls) {
        QStringList words;
        for (const QByteArray &word : call)
            words.append(QLatin1Char('[') + QString::fromUtf8(word) + QLatin1Char(']'));
        lines.append(words.join(QLatin1Char(' ')));
    }
    return lines.join(QLatin1Char('\n'));
}

QList<Call> runInShell(const QString &line, const QString &callsFile)
{
    QFile::remove(callsFile);
    QProcess shell;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    environment.insert(QStringLiteral("CALLS"), callsFile);
    shell.setProcessEnvironment(environment);
    shell.setStandardInputFile(QProcess::nullDevice());
    shell.setProcessChannelMode(QProcess::ForwardedChannels);
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line});
    if (!shell.waitForFinished(20000) || shell.exitStatus() != QProcess::NormalExit ||
        shell.exitCode() != 0)
        fail("the shell did not run the line to its exit 0", line);
    QFile log(callsFile);
    return log.open(QIODevice::ReadOnly) ? parseCalls(log.readAll()) : QList<Call>{};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Scene scene;
    FuzzedDataProvider input(data, size);
    QList<AuthorizationService::Move> moves;
    QStringList daemons;
    QStringList ids;
    const int count = input.ConsumeIntegralInRange(0, 6);
    for (int i = 0; i < count; ++i) {
        switch (input.ConsumeIntegralInRange(0, 2)) {
        case 0:
            daemons.append(fuzzedPath(input, scene.prefixes));
            break;
        case 1:
            ids.append(fuzzedText(input));
            break;
        default: {
            const QString source = fuzzedPath(input, scene.prefixes);
            moves.append({source, fuzzedPath(input, scene.prefixes)});
        }
        }
    }

    const QList<Call> expected = expectedCalls(moves, daemons, ids, scene.root);
    const QStringList commands = AuthorizationService::commands(moves, daemons, ids);
    if (commands.size() != expected.size())
        fail("the command list differs from the model",
             commands.join(u'\n') + QStringLiteral("\n-- model:\n") + describe(expected));
    if (commands.isEmpty())
        return 0;
    const QString line = AuthorizationService::commandLine(commands);
    if (line.contains(QChar(0)) || !line.isValidUtf16())
        fail("the line holds text a shell cannot receive", line);
    if (unescapeAppleScript(AuthorizationService::appleScriptSource(line)) != line)
        fail("the AppleScript literal does not give back the line", line);
    const QList<Call> ran = runInShell(line, scene.callsFile);
    if (ran != expected)
        fail("the shell ran other words than the model predicts",
             line + QStringLiteral("\n-- ran:\n") + describe(ran) +
                 QStringLiteral("\n-- model:\n") + describe(expected));
    return 0;
}
