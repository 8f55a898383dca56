// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "Output.h"
#include "PassphraseSource.h"
#include "Pipeline.h"
#include "Progress.h"
#include "Signals.h"
#include "SystemError.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QFile>
#include <QScopeGuard>

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using Pellarvine::CryptorError;
using Pellarvine::Decryptor;
using Pellarvine::Encryptor;

namespace {

enum class Direction {
    seal,
    open,
};

struct Input
{
    Stream stream;
    qint64 length = -1;
    std::optional<mode_t> mode; // a regular file's
};

Input openInput(const QString &path)
{
    Input input;
    if (path == "-"_L1)
        input.stream = { STDIN_FILENO, u"standard input"_s };
    else
        input.stream = { ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC), path };
    struct stat status = {};
    if (input.stream.descriptor < 0 || fstat(input.stream.descriptor, &status) != 0)
        throwSystemError(input.stream.name, errno);
    if (S_ISDIR(status.st_mode))
        throwSystemError(input.stream.name, EISDIR);
    if (S_ISREG(status.st_mode)) {
        input.length = status.st_size;
        input.mode = status.st_mode & 0777;
    }
    return input;
}

std::unique_ptr<Output> openOutput(Direction direction, const QString &path, bool replaces,
                                   std::optional<mode_t> mode, const Signals &signals)
{
    if (path != "-"_L1)
        return makeFileOutput(path, replaces, mode);
    if (direction == Direction::open)
        return makeSpooledOutput(signals); // nothing unverified leaves
    if (isatty(STDOUT_FILENO)) {
        throw CommandError(ExitStatus::badUsage,
                           u"standard output is a terminal: name a file or send it to one"_s);
    }
    return makeStreamOutput();
}

Transform makeTransform(Direction direction, QStringView passphrase)
{
    // Shared, since a function object has to be copyable.
    if (direction == Direction::seal) {
        const auto encryptor = std::make_shared<Encryptor>(passphrase);
        return { [=](QByteArrayView data) { return encryptor->feed(data); },
                 [=] {
                     return encryptor->finalize();
                 } };
    }
    const auto decryptor = std::make_shared<Decryptor>(passphrase);
    return { [=](QByteArrayView data) { return decryptor->feed(data); },
             [=] {
                 return decryptor->finalize();
             } };
}

CommandError described(const CryptorError &error, const QString &name)
{
    switch (error.code()) {
    case CryptorError::invalidFileFormat:
        return { ExitStatus::invalidFileFormat, name + u": not a sealed file"_s };
    case CryptorError::invalidHMAC:
        return { ExitStatus::invalidHMAC, name + u": wrong passphrase or damaged"_s };
    case CryptorError::truncatedFile:
        break;
    }
    return { ExitStatus::truncatedFile, name + u": truncated, it ends within its header"_s };
}

void runTransfer(Direction direction, const QStringList &arguments)
{
    const bool isSeal = direction == Direction::seal;
    QCommandLineParser parser;
    parser.setApplicationDescription(
            isSeal ? u"Encrypts IN under a passphrase and writes the sealed file to OUT."_s
                   : u"Decrypts the sealed file IN and writes its content to OUT. OUT is written "
                     u"only\n"
                     u"if the passphrase is right and every byte of IN is as it was sealed."_s);
    addPassphraseOptions(parser);
    const QCommandLineOption force({ u"f"_s, u"force"_s }, u"Replace OUT if it exists."_s);
    const QCommandLineOption quiet({ u"q"_s, u"quiet"_s }, u"Show no progress."_s);
    parser.addOptions({ force, quiet });
    parser.addPositionalArgument(u"IN"_s, u"The file to read; - is standard input."_s);
    parser.addPositionalArgument(u"OUT"_s, u"The file to write; - is standard output."_s);
    const QString name = isSeal ? u"seal"_s : u"open"_s;
    parse(parser, name, arguments);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2) {
        throw CommandError(ExitStatus::badUsage,
                           name + u": takes IN and OUT; see pellarvine %1 --help"_s.arg(name));
    }

    const Signals signals;
    const Input input = openInput(files[0]);
    const auto closeInput = qScopeGuard([&] { close(input.stream.descriptor); });
    const auto output = openOutput(direction, files[1], parser.isSet(force), input.mode, signals);
    const SecretText passphrase =
            readPassphrase(parser, isSeal ? Prompt::twice : Prompt::once, signals);
    try {
        Progress progress(parser.isSet(quiet), input.length);
        runPipeline(input.stream, output->stream(), makeTransform(direction, passphrase.view()),
                    signals, progress);
    } catch (const CryptorError &error) {
        throw described(error, input.stream.name);
    }
    output->commit();
}

} // namespace

void runSeal(const QStringList &arguments)
{
    runTransfer(Direction::seal, arguments);
}

void runOpen(const QStringList &arguments)
{
    runTransfer(Direction::open, arguments);
}
