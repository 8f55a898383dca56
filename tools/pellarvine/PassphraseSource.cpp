// SPDX-License-Identifier: MIT
#include "PassphraseSource.h"

#include "Command.h"
#include "Signals.h"
#include "SystemError.h"

#include <QCommandLineParser>
#include <QFile>
#include <QScopeGuard>
#include <QStringDecoder>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t longestPassphrase = 64 * 1024;

const QString fileOption = u"passphrase-file"_s;
const QString descriptorOption = u"passphrase-fd"_s;

// Bytes that are wiped when they go, at a place that never moves.
struct Buffer
{
    std::array<char, longestPassphrase> bytes;
    std::size_t length = 0;

    Buffer() = default;
    Buffer(const Buffer &) = delete;
    Buffer &operator=(const Buffer &) = delete;
    ~Buffer() { explicit_bzero(bytes.data(), bytes.size()); }
};

SecretText decoded(const Buffer &buffer, const QString &subject)
{
    const QByteArrayView bytes(buffer.bytes.data(), qsizetype(buffer.length));
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom);
    QString text(decoder.requiredSpace(bytes.size()), Qt::Uninitialized);
    text.truncate(decoder.appendToBuffer(text.data(), bytes) - text.constData());
    if (decoder.hasError())
        throw CommandError(ExitStatus::systemError, subject + u": not UTF-8 text"_s);
    return SecretText(std::move(text));
}

// Reads to the end, less one trailing newline.
SecretText readAll(int descriptor, const QString &subject, const Signals &signals)
{
    const auto buffer = std::make_unique<Buffer>();
    for (;;) {
        signals.waitFor(descriptor, std::chrono::milliseconds(-1));
        const ssize_t count = read(descriptor, buffer->bytes.data() + buffer->length,
                                   buffer->bytes.size() - buffer->length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throwSystemError(subject, errno);
        if (count == 0)
            break;
        buffer->length += std::size_t(count);
        if (buffer->length == buffer->bytes.size())
            throw CommandError(ExitStatus::systemError, subject + u": longer than 64 KiB"_s);
    }
    if (buffer->length > 0 && buffer->bytes[buffer->length - 1] == '\n')
        --buffer->length;
    return decoded(*buffer, subject);
}

SecretText ask(int terminal, const char *question, const Signals &signals)
{
    const QString subject = u"/dev/tty"_s;
    termios shown = {};
    if (tcgetattr(terminal, &shown) != 0)
        throwSystemError(subject, errno);
    termios hidden = shown;
    hidden.c_lflag &= ~tcflag_t(ECHO | ECHONL);
    hidden.c_lflag |= tcflag_t(ICANON | ISIG);
    // What was typed ahead of the question is dropped, since it was echoed.
    if (tcsetattr(terminal, TCSAFLUSH, &hidden) != 0)
        throwSystemError(subject, errno);
    const auto show = qScopeGuard([&] {
        tcsetattr(terminal, TCSAFLUSH, &shown);
        dprintf(terminal, "\n");
    });

    dprintf(terminal, "%s: ", question);
    const auto buffer = std::make_unique<Buffer>();
    // The terminal hands over a line at a time.
    for (;;) {
        signals.waitFor(terminal, std::chrono::milliseconds(-1));
        const ssize_t count = read(terminal, buffer->bytes.data() + buffer->length,
                                   buffer->bytes.size() - buffer->length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throwSystemError(subject, errno);
        if (count == 0 && buffer->length == 0)
            throw CommandError(ExitStatus::systemError, u"no passphrase given"_s);
        buffer->length += std::size_t(count);
        if (count == 0)
            break;
        if (buffer->bytes[buffer->length - 1] == '\n') {
            --buffer->length;
            break;
        }
        if (buffer->length == buffer->bytes.size())
            throw CommandError(ExitStatus::systemError, u"passphrase longer than 64 KiB"_s);
    }
    return decoded(*buffer, subject);
}

SecretText askOnTerminal(Prompt prompt, const Signals &signals)
{
    const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
    if (terminal < 0) {
        throw CommandError(ExitStatus::badUsage,
                           u"no terminal to ask for the passphrase on: give --passphrase-file or "
                           u"--passphrase-fd"_s);
    }
    const auto closeTerminal = qScopeGuard([=] { close(terminal); });
    SecretText first = ask(terminal, "Passphrase", signals);
    if (prompt == Prompt::twice && ask(terminal, "Once more", signals).view() != first.view())
        throw CommandError(ExitStatus::badUsage, u"the two passphrases differ"_s);
    return first;
}

} // namespace

SecretText::~SecretText()
{
    // data() of a text that nobody shares is the text itself.
    explicit_bzero(m_text.data(), std::size_t(m_text.size()) * sizeof(QChar));
}

void addPassphraseOptions(QCommandLineParser &parser)
{
    parser.addOption({ fileOption,
                       u"Read the passphrase from <file>; one newline at its end is dropped."_s,
                       u"file"_s });
    parser.addOption({ descriptorOption,
                       u"Read the passphrase from the open file descriptor <number>."_s,
                       u"number"_s });
}

SecretText readPassphrase(const QCommandLineParser &parser, Prompt prompt, const Signals &signals)
{
    if (parser.isSet(fileOption) && parser.isSet(descriptorOption)) {
        throw CommandError(ExitStatus::badUsage,
                           u"--passphrase-file and --passphrase-fd exclude each other"_s);
    }
    if (parser.isSet(fileOption)) {
        const QString path = parser.value(fileOption);
        const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0)
            throwSystemError(path, errno);
        const auto closeFile = qScopeGuard([=] { close(descriptor); });
        return readAll(descriptor, path, signals);
    }
    if (parser.isSet(descriptorOption)) {
        const QString number = parser.value(descriptorOption);
        bool isNumber = false;
        const int descriptor = number.toInt(&isNumber);
        if (!isNumber || descriptor < 0) {
            throw CommandError(ExitStatus::badUsage,
                               u"--passphrase-fd takes a number, not '%1'"_s.arg(number));
        }
        return readAll(descriptor, u"file descriptor "_s + number, signals);
    }
    return askOnTerminal(prompt, signals);
}
