// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "Output.h"
#include "PassphraseSource.h"
#include "Pipeline.h"
#include "Progress.h"
#include "Shared/DecryptorEnd.h"
#include "Signals.h"
#include "SystemError.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

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
    FileDescriptor file; // closed if the input is one of the process's own descriptors
    Stream stream;
    qint64 length = -1;
    std::optional<mode_t> mode; // of a regular file
};

Input openInput(const QByteArray &path, const Signals &signals)
{
    Input input;
    if (path == "-") {
        input.stream = { STDIN_FILENO, "standard input" };
    } else {
        input.file = signals.open(path, O_RDONLY);
        input.stream = { input.file, path };
    }
    struct stat status = {};
    if (fstat(input.stream.descriptor, &status) != 0)
        throwSystemError(input.stream.name, errno);
    if (S_ISDIR(status.st_mode))
        throwSystemError(input.stream.name, EISDIR);
    if (S_ISREG(status.st_mode)) {
        input.length = status.st_size;
        input.mode = status.st_mode & 0777;
    }
    return input;
}

// Whether writing to `sink` would change the data that is read from `source`.
bool isSameFile(int source, int sink)
{
    struct stat read = {};
    struct stat written = {};
    if (fstat(source, &read) != 0 || fstat(sink, &written) != 0)
        return false;
    if (S_ISREG(read.st_mode))
        return read.st_dev == written.st_dev && read.st_ino == written.st_ino;
    return S_ISBLK(read.st_mode) && S_ISBLK(written.st_mode) && read.st_rdev == written.st_rdev;
}

Transform makeTransform(Direction direction, QStringView passphrase, const QByteArray &name)
{
    // A shared pointer, because std::function copies its function object.
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
                 if (const auto last = Pellarvine::detail::finalizeIfWellFormed(*decryptor))
                     return *last;
                 throw CommandError(ExitStatus::invalidHMAC,
                                    name
                                            + ": the passphrase is right, but the sealed text is "
                                              "malformed");
             } };
}

CommandError described(const CryptorError &error, const QByteArray &name)
{
    switch (error.code()) {
    case CryptorError::invalidFileFormat:
        return { ExitStatus::invalidFileFormat, name + ": not a sealed file" };
    case CryptorError::invalidHMAC:
        return { ExitStatus::invalidHMAC, name + ": wrong passphrase or damaged" };
    case CryptorError::truncatedFile:
        break;
    }
    return { ExitStatus::truncatedFile,
             name + ": not a sealed file, or cut short within its header" };
}

void runTransfer(Direction direction, const QByteArrayList &arguments)
{
    const bool isSeal = direction == Direction::seal;
    CommandLine line(
            isSeal ? "seal" : "open",
            isSeal ? u"Encrypts IN under a passphrase and writes the sealed file to OUT."_s
                   : u"Decrypts the sealed file IN and writes its content to OUT. OUT is written "
                     u"only\n"
                     u"if the passphrase is right and IN was not changed."_s);
    const PassphraseSource source(line, isSeal ? Prompt::twice : Prompt::once);
    const QCommandLineOption force({ u"f"_s, u"force"_s }, u"Replace OUT if it exists."_s);
    const QCommandLineOption quiet({ u"q"_s, u"quiet"_s }, u"Show no progress."_s);
    line.addOptions({ force, quiet });
    line.addPositionalArgument(u"IN"_s, u"The file to read; - is standard input."_s);
    line.addPositionalArgument(u"OUT"_s, u"The file to write; - is standard output."_s);
    line.parse(arguments);
    const QByteArrayList files = line.operands();
    if (files.size() != 2) {
        throw CommandError(ExitStatus::badUsage, line.command()
                                                         + ": takes IN and OUT; see pellarvine "
                                                         + line.command() + " --help");
    }
    source.check(files[0]);

    const Signals signals;
    const Input input = openInput(files[0], signals);
    // Nothing is written before the tag is verified.
    const Release release = isSeal ? Release::atOnce : Release::onceCommitted;
    const auto output = openOutput(files[1], release, line.isSet(force), input.mode, signals);
    // A file that is replaced is not the same: the output is a temporary file until the end.
    if (isSameFile(input.stream.descriptor, output->stream().descriptor))
        throw CommandError(ExitStatus::badUsage,
                           output->stream().name + " writes into IN, which is still being read");
    const SecretText passphrase = source.read(signals);
    try {
        Progress progress(line.isSet(quiet), input.length);
        runPipeline(input.stream, output->stream(),
                    makeTransform(direction, passphrase.view(), input.stream.name), signals,
                    progress);
    } catch (const CryptorError &error) {
        throw described(error, input.stream.name);
    }
    output->commit();
}

} // namespace

void runSeal(const QByteArrayList &arguments)
{
    runTransfer(Direction::seal, arguments);
}

void runOpen(const QByteArrayList &arguments)
{
    runTransfer(Direction::open, arguments);
}
