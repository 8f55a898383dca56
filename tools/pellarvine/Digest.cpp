// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <pellarvine/Shared/Data+Hashing.h>

#include <QFile>
#include <QFileInfo>

#include <cstdio>

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

HashingAlgorithm algorithmNamed(const QString &text)
{
    QStringList known;
    for (const Name &name : names) {
        if (text == QLatin1String(name.text))
            return name.algorithm;
        known.append(QLatin1String(name.text));
    }
    throw CommandError(ExitStatus::badUsage,
                       u"no algorithm '%1'; there are %2"_s.arg(text, known.join(u", "_s)));
}

QString digestLine(const QString &path, HashingAlgorithm algorithm)
{
    const auto fail = [&](const QString &cause) {
        throw CommandError(ExitStatus::systemError, path + u": "_s + cause);
    };
    QFile file(path);
    const bool isStandardInput = path == "-"_L1;
    if (!isStandardInput && QFileInfo(path).isDir())
        fail(u"Is a directory"_s);
    const bool isOpen = isStandardInput ? file.open(stdin, QIODevice::ReadOnly)
                                        : file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    if (!isOpen)
        fail(file.errorString());
    const auto digest = Pellarvine::hashed(file, algorithm);
    if (!digest)
        fail(file.errorString());

    // The form of coreutils' checksum programs: a name with a line break or a backslash is
    // escaped, and the line then begins with a backslash.
    QString name = path;
    name.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s).replace(u'\r', u"\\r"_s);
    const QString mark = name == path ? QString() : u"\\"_s;
    return mark + QString::fromLatin1(digest->toHex()) + u"  "_s + name;
}

} // namespace

void runDigest(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
            u"Prints a checksum a file, in lines that sha256sum -c and its siblings accept.\n"
            "FILE - is standard input."_s);
    const QCommandLineOption algorithm(
            { u"a"_s, u"algorithm"_s },
            u"md5, sha1, sha224, sha256 (the default), sha384 or sha512."_s, u"name"_s,
            u"sha256"_s);
    parser.addOption(algorithm);
    parser.addPositionalArgument(u"FILE"_s, u"Files to read."_s, u"FILE..."_s);
    parse(parser, u"digest"_s, arguments);
    const HashingAlgorithm chosen = algorithmNamed(parser.value(algorithm));
    if (parser.positionalArguments().isEmpty())
        throw CommandError(ExitStatus::badUsage, u"digest: no FILE given"_s);
    // A file that cannot be read does not keep the others from being printed.
    std::optional<CommandError> failure;
    for (const QString &path : parser.positionalArguments()) {
        try {
            std::printf("%s\n", QFile::encodeName(digestLine(path, chosen)).constData());
        } catch (const CommandError &error) {
            if (failure)
                std::fprintf(stderr, "pellarvine: %s\n", failure->what());
            failure = error;
        }
    }
    if (failure)
        throw *failure;
}
