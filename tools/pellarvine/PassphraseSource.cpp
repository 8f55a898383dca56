// SPDX-License-Identifier: MIT
#include "PassphraseSource.h"

#include "AskedProgram.h"
#include "Command.h"
#include "Place.h"
#include "Signals.h"
#include "SystemError.h"

#include <pellarvine/Shared/PassphraseWords.h>

#include <QStringDecoder>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// A terminal passes on no longer lines, and drops the rest silently.
constexpr std::size_t longestTypedLine = 4095;
constexpr std::size_t longestPassphrase = 64 * 1024;

// Bytes that the destructor wipes, at an address that does not change.
struct Buffer
{
    std::array<char, longestPassphrase> bytes;
    std::size_t length = 0;

    Buffer() = default;
    Buffer(const Buffer &) = delete;
    Buffer &operator=(const Buffer &) = delete;
    ~Buffer() { explicit_bzero(bytes.data(), bytes.size()); }
};

SecretText decoded(const Buffer &buffer, const QByteArray &subject)
{
    const QByteArrayView bytes(buffer.bytes.data(), qsizetype(buffer.length));
    QStringDecoder decoder(QStringConverter::Utf8); // which drops a byte order mark
    QString text(decoder.requiredSpace(bytes.size()), Qt::Uninitialized);
    text.truncate(decoder.appendToBuffer(text.data(), bytes) - text.constData());
    if (decoder.hasError())
        throw CommandError(ExitStatus::systemError, subject + ": not UTF-8 text");
    return SecretText(std::move(text));
}

// Reads a piece. False at the end.
bool readMore(int descriptor, Buffer &buffer, const QByteArray &subject, const Signals &signals)
{
    for (;;) {
        signals.waitFor(descriptor);
        const ssize_t count = read(descriptor, buffer.bytes.data() + buffer.length,
                                   buffer.bytes.size() - buffer.length);
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (count < 0)
            throwSystemError(subject, errno);
        buffer.length += std::size_t(count);
        return count > 0;
    }
}

// Reads one line, with or without its end, up to the end of the file.
SecretText readLine(int descriptor, const QByteArray &subject, const Signals &signals)
{
    const auto buffer = std::make_unique<Buffer>();
    const auto hasLineEnd = [&] {
        const void *const end = std::memchr(buffer->bytes.data(), '\n', buffer->length);
        if (end && end != buffer->bytes.data() + buffer->length - 1) {
            throw CommandError(ExitStatus::badUsage,
                               subject + ": has more than one line; a passphrase is a single line");
        }
        return end != nullptr;
    };
    while (readMore(descriptor, *buffer, subject, signals)) {
        if (!hasLineEnd() && buffer->length == buffer->bytes.size())
            throw CommandError(ExitStatus::systemError, subject + ": longer than 64 KiB");
    }
    if (hasLineEnd()) {
        --buffer->length;
        if (buffer->length > 0 && buffer->bytes[buffer->length - 1] == '\r')
            --buffer->length;
    }
    return decoded(*buffer, subject);
}

// A terminal without echo.
class HiddenTyping
{
public:
    explicit HiddenTyping(int terminal)
        : m_terminal(terminal)
    {
        if (tcgetattr(terminal, &m_shown) != 0)
            throwSystemError("/dev/tty", errno);
        termios hidden = m_shown;
        hidden.c_lflag &= ~tcflag_t(ECHO | ECHONL);
        hidden.c_lflag |= tcflag_t(ICANON | ISIG);
        // Drops characters that were typed before the question, since they were echoed.
        if (tcsetattr(terminal, TCSAFLUSH, &hidden) != 0)
            throwSystemError("/dev/tty", errno);
    }
    HiddenTyping(const HiddenTyping &) = delete;
    HiddenTyping &operator=(const HiddenTyping &) = delete;
    ~HiddenTyping()
    {
        tcsetattr(m_terminal, TCSAFLUSH, &m_shown);
        dprintf(m_terminal, "\n");
    }

private:
    int m_terminal;
    termios m_shown = {};
};

SecretText readTypedLine(int terminal, const Signals &signals)
{
    const auto buffer = std::make_unique<Buffer>();
    // Ctrl+D submits the typed characters; a second one ends the line.
    while (buffer->length == 0 || buffer->bytes[buffer->length - 1] != '\n') {
        if (!readMore(terminal, *buffer, "/dev/tty", signals)) {
            if (buffer->length == 0)
                throw CommandError(ExitStatus::systemError, "no passphrase given");
            return decoded(*buffer, "/dev/tty");
        }
        if (buffer->length > longestTypedLine) {
            throw CommandError(ExitStatus::badUsage,
                               "the passphrase is too long for the terminal: give "
                               "--passphrase-file or --passphrase-fd");
        }
    }
    --buffer->length;
    return decoded(*buffer, "/dev/tty");
}

SecretText ask(int terminal, const char *question, const Signals &signals)
{
    // Repeated after the process was stopped, with its terminal restored, and continued.
    for (;;) {
        const SuspensionDelay delay(signals);
        const HiddenTyping hidden(terminal);
        dprintf(terminal, "%s", question);
        try {
            return readTypedLine(terminal, signals);
        } catch (const Suspended &) { // NOLINT(bugprone-empty-catch): see above
        }
    }
}

QByteArray nameOf(int descriptor)
{
    return descriptor == STDIN_FILENO ? "standard input"
                                      : "file descriptor " + QByteArray::number(descriptor);
}

} // namespace

SecretText::~SecretText()
{
    // data() does not copy, because the text is not shared.
    explicit_bzero(m_text.data(), std::size_t(m_text.size()) * sizeof(QChar));
}

PassphraseSource::PassphraseSource(CommandLine &line, Prompt prompt)
    : m_line(line)
    , m_prompt(prompt)
    , m_file(u"passphrase-file"_s,
             u"Read the passphrase from <file>, which is a single line; - is standard input."_s,
             u"file"_s)
    , m_descriptor(u"passphrase-fd"_s,
                   u"Read the passphrase, a single line, from the open file descriptor <number>."_s,
                   u"number"_s)
    , m_program(u"askpass"_s,
                u"Run <program> to ask for the passphrase, which it prints. Without this option, "
                u"$PELLARVINE_ASKPASS names the program."_s,
                u"program"_s)
    , m_generate(u"generate"_s,
                 u"Make up a passphrase of six words and print it once, on the terminal."_s)
    , m_allowEmpty(u"allow-empty-passphrase"_s,
                   u"Seal under an empty passphrase, which protects nothing."_s)
{
    line.addOptions({ m_file, m_descriptor, m_program });
    if (prompt == Prompt::twice)
        line.addOptions({ m_generate, m_allowEmpty });
}

void PassphraseSource::check(const QByteArray &input) const
{
    const bool generates = m_prompt == Prompt::twice && m_line.isSet(m_generate);
    if (m_line.isSet(m_file) + m_line.isSet(m_descriptor) + m_line.isSet(m_program) + generates
        > 1) {
        throw CommandError(ExitStatus::badUsage,
                           QByteArray("--passphrase-file, --passphrase-fd")
                                   + (m_prompt == Prompt::twice ? ", --askpass and --generate"
                                                                : " and --askpass")
                                   + " cannot be used together");
    }
    for (const QCommandLineOption &named : { m_file, m_program }) {
        if (m_line.isSet(named) && m_line.value(named).isEmpty()) {
            throw CommandError(ExitStatus::badUsage, "--" + named.names().constFirst().toLatin1()
                                                             + ": the name is empty");
        }
    }
    const std::optional<int> passphrase = descriptor();
    const std::optional<int> sealed = input == "-" ? STDIN_FILENO : placeOf(input).descriptor;
    if (passphrase && passphrase == sealed) {
        throw CommandError(ExitStatus::badUsage,
                           nameOf(*passphrase) + " cannot be both IN and the passphrase");
    }
}

SecretText PassphraseSource::read(const Signals &signals) const
{
    if (const std::optional<int> from = descriptor())
        return checked(readLine(*from, nameOf(*from), signals));
    if (m_line.isSet(m_file)) {
        const QByteArray path = m_line.value(m_file);
        const FileDescriptor file = signals.open(path, O_RDONLY);
        return checked(readLine(file, path, signals));
    }
    if (m_prompt == Prompt::twice && m_line.isSet(m_generate))
        return generate();
    const QByteArray program =
            m_line.isSet(m_program) ? m_line.value(m_program) : qgetenv("PELLARVINE_ASKPASS");
    return program.isEmpty() ? askOnTerminal(signals) : askByProgram(program, signals);
}

SecretText PassphraseSource::askOnTerminal(const Signals &signals) const
{
    const FileDescriptor terminal(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    if (!terminal.isOpen()) {
        throw CommandError(
                ExitStatus::badUsage,
                "there is no terminal to ask for the passphrase: give --passphrase-file, "
                "--passphrase-fd or --askpass");
    }
    return askFor([&](const char *question) { return ask(terminal, question, signals); });
}

SecretText PassphraseSource::generate() const
{
    const FileDescriptor terminal(open("/dev/tty", O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (!terminal.isOpen()) {
        throw CommandError(ExitStatus::badUsage,
                           "there is no terminal to print the generated passphrase");
    }
    // Before sealing: a passphrase that was not displayed would lock the file forever.
    SecretText passphrase(Pellarvine::generatedPassphrase());
    const std::string line = "Passphrase: " + passphrase.view().toLatin1().toStdString() + '\n';
    if (write(terminal, line.data(), line.size()) != ssize_t(line.size()))
        throwSystemError("/dev/tty", errno);
    return passphrase;
}

SecretText PassphraseSource::askByProgram(const QByteArray &program, const Signals &signals) const
{
    return askFor([&](const char *question) {
        AskedProgram asked(program, question, signals);
        SecretText answer = readLine(asked.output(), program, signals);
        asked.finish();
        return answer;
    });
}

template <typename Ask>
SecretText PassphraseSource::askFor(Ask ask) const
{
    SecretText first = checked(ask("Passphrase: "));
    if (m_prompt == Prompt::twice && ask("Once more: ").view() != first.view())
        throw CommandError(ExitStatus::badUsage, "the two passphrases differ");
    return first;
}

SecretText PassphraseSource::checked(SecretText passphrase) const
{
    if (m_prompt == Prompt::twice && passphrase.view().isEmpty() && !m_line.isSet(m_allowEmpty)) {
        throw CommandError(ExitStatus::badUsage,
                           "the passphrase is empty; --allow-empty-passphrase allows that");
    }
    return passphrase;
}

std::optional<int> PassphraseSource::descriptor() const
{
    if (m_line.isSet(m_file)) {
        const QByteArray path = m_line.value(m_file);
        return path == "-" ? STDIN_FILENO : placeOf(path).descriptor;
    }
    if (!m_line.isSet(m_descriptor))
        return std::nullopt;
    const QByteArray number = m_line.value(m_descriptor);
    bool isNumber = false;
    const int descriptor = number.toInt(&isNumber);
    if (!isNumber || descriptor < 0) {
        throw CommandError(ExitStatus::badUsage,
                           "--passphrase-fd takes a number, not '" + number + '\'');
    }
    return descriptor;
}
