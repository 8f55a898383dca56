// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "FileDescriptor.h"
#include "SystemError.h"

#include <pellarvine/Shared/Data+Hashing.h>

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

using Pellarvine::HashingAlgorithm;

namespace {

struct Name
{
    const char *text;
    HashingAlgorithm algorithm;
};

constexpr Name names[] = {
    { "md5", HashingAlgorithm::md5 },       { "sha1", HashingAlgorithm::sha1 },
    { "sha224", HashingAlgorithm::sha224 }, { "sha256", HashingAlgorithm::sha256 },
    { "sha384", HashingAlgorithm::sha384 }, { "sha512", HashingAlgorithm::sha512 },
};

HashingAlgorithm algorithmNamed(const QByteArray &text)
{
    QByteArrayList known;
    for (const Name &name : names) {
        if (text == name.text)
            return name.algorithm;
        known.append(name.text);
    }
    throw CommandError(ExitStatus::badUsage,
                       "no algorithm '" + text + "'; there are " + known.join(", "));
}

QByteArray digestLine(const QByteArray &path, HashingAlgorithm algorithm)
{
    const FileDescriptor descriptor = openForReading(path);
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw CommandError(ExitStatus::systemError, path + ": " + file.errorString().toLocal8Bit());
    const auto digest = Pellarvine::hashed(file, algorithm);
    if (!digest)
        throw CommandError(ExitStatus::systemError, path + ": " + file.errorString().toLocal8Bit());

    // The form of coreutils' checksum programs: a name with a line break or a backslash is
    // escaped, and the line then begins with a backslash.
    QByteArray name = path;
    name.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r");
    return (name == path ? "" : "\\") + digest->toHex() + "  " + name;
}

} // namespace

void runDigest(const QByteArrayList &arguments)
{
    CommandLine line("digest",
                     u"Prints a checksum for each FILE, in the format of sha256sum and its "
                     u"siblings.\nFILE - is standard input."_s);
    const QCommandLineOption algorithm(
            { u"a"_s, u"algorithm"_s },
            u"md5, sha1, sha224, sha256 (the default), sha384 or sha512."_s, u"name"_s,
            u"sha256"_s);
    line.addOption(algorithm);
    line.addPositionalArgument(u"FILE"_s, u"Files to read."_s, u"FILE..."_s);
    line.parse(arguments);
    const HashingAlgorithm chosen = algorithmNamed(line.value(algorithm));
    if (line.operands().isEmpty())
        throw CommandError(ExitStatus::badUsage, "digest: no FILE given");
    // The other files are printed after an unreadable one.
    std::optional<CommandError> failure;
    for (const QByteArray &path : line.operands()) {
        QByteArray text;
        try {
            text = digestLine(path, chosen);
        } catch (const CommandError &error) {
            if (failure)
                std::fprintf(stderr, "pellarvine: %s\n", failure->what());
            failure = error;
            continue;
        }
        // Prints each line at once: the next file may take long, or a signal may end the run.
        if (std::printf("%s\n", text.constData()) < 0 || std::fflush(stdout) != 0)
            throwSystemError("standard output", errno);
    }
    if (failure)
        throw *failure;
}
