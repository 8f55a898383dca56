// SPDX-License-Identifier: MIT
#include "Shared/CryptorEngine.h"
#include "Shared/HMAC.h"
#include "Shared/KeyGen.h"
#include "Shared/Overlap.h"

#include <pellarvine/Shared/Data+Hashing.h>
#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>
#include <pellarvine/Shared/OpeningDevice.h>
#include <pellarvine/Shared/Sealing.h>
#include <pellarvine/Shared/SealingDevice.h>
#include <pellarvine/Shared/TransferError.h>

#include <QBuffer>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

const QString passphrase = u"correct horse battery staple"_s;

QByteArray textOfLength(qsizetype length)
{
    QByteArray text(length, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : text) {
        state = state * 1664525 + 1013904223;
        byte = char(state >> 24);
    }
    return text;
}

// A sequential device like a pipe, which sometimes has no data yet.
class Trickle : public QIODevice
{
public:
    explicit Trickle(QByteArray bytes)
        : m_bytes(std::move(bytes))
    {
        open(ReadOnly | Unbuffered);
    }
    bool isSequential() const override { return true; }
    bool waitForReadyRead(int) override
    {
        m_isReady = true;
        return !m_bytes.isEmpty();
    }

protected:
    qint64 readData(char *data, qint64 length) override
    {
        if (!std::exchange(m_isReady, false))
            return 0;
        const qsizetype count = std::min({ qsizetype(length), m_bytes.size(), qsizetype(4000) });
        std::copy_n(m_bytes.constData(), count, data);
        m_bytes.remove(0, count);
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    bool m_isReady = false;
};

using Outcome = std::variant<QByteArray, CryptorError::Code>;

// The result of opening: the text, or the code of the error.
Outcome opened(QIODevice &in, const QString &text = passphrase)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    try {
        Pellarvine::open(in, out, text);
        return out.data();
    } catch (const CryptorError &error) {
        EXPECT_TRUE(out.data().isEmpty()) << "text of a container that is not genuine";
        return error.code();
    }
}

// The code and the message of the exception; -1 if none is thrown.
template <typename Action>
std::pair<int, QString> transferError(const Action &action)
{
    try {
        action();
    } catch (const TransferError &error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), error.localizedDescription());
        return { error.code(), error.localizedDescription() };
    }
    return { -1, u"nothing was thrown"_s };
}

} // namespace

TEST(Overlap, the_second_piece_of_work_follows_the_first_to_its_end)
{
    for (int round = 0; round < 200; ++round) {
        detail::Watermark written;
        qsizetype seen = 0;
        detail::runOverlapped(
                [&] {
                    for (qsizetype length = 1; length <= 50; ++length)
                        written.raise(length);
                    written.finish(60);
                },
                [&] {
                    detail::Watermark::Level level { 0, false };
                    while (!level.isFinal) {
                        level = written.waitAbove(level.length);
                        EXPECT_GE(level.length, seen);
                        seen = level.length;
                    }
                });
        ASSERT_EQ(seen, 60);
    }
}

TEST(Sealing, large_feeds_give_the_bytes_of_small_ones)
{
    const QByteArray text = textOfLength((5 << 20) + 7);
    for (const qsizetype chunk : { text.size(), qsizetype(1 << 20), qsizetype(300001) }) {
        Encryptor encryptor(passphrase);
        const Data header = encryptor.header().value();
        QByteArray sealed;
        for (qsizetype start = 0; start < text.size(); start += chunk)
            sealed += encryptor.feed(
                    QByteArrayView(text).sliced(start, std::min(chunk, text.size() - start)));
        sealed += encryptor.finalize();

        const QByteArray password = passphrase.toUtf8();
        detail::CryptorEngine engine(detail::CryptorOperation::encrypt,
                                     detail::KeyGen::generateAES256(password, header.sliced(4, 8)),
                                     header.sliced(20));
        detail::HMAC hmac(detail::KeyGen::generateAES256(password, header.sliced(12, 8)));
        QByteArray expected = header + engine.feed(text);
        expected += engine.finalize();
        hmac.feed(expected);
        expected += hmac.finalize();
        ASSERT_TRUE(sealed == expected) << chunk;

        Decryptor decryptor(passphrase);
        QByteArray back;
        for (qsizetype start = 0; start < sealed.size(); start += chunk)
            back += decryptor.feed(
                    QByteArrayView(sealed).sliced(start, std::min(chunk, sealed.size() - start)));
        back += decryptor.finalize();
        ASSERT_TRUE(back == text) << chunk;
    }
}

TEST(Sealing, devices_of_every_kind_and_length_come_back)
{
    for (const qsizetype length : { 0, 1, 16, 100000, 3 << 20 }) {
        QByteArray text = textOfLength(length);
        Trickle in(text);
        QBuffer sealed;
        sealed.open(QIODevice::ReadWrite);
        seal(in, sealed, passphrase);
        EXPECT_EQ(sealed.size(), 36 + (length / 16 + 1) * 16 + 32);

        Trickle pipe(sealed.data());
        EXPECT_TRUE(opened(pipe) == Outcome(text)) << length;
        sealed.seek(0);
        EXPECT_TRUE(opened(sealed) == Outcome(text)) << length;
    }
}

TEST(Sealing, nothing_is_written_of_a_container_that_is_not_genuine)
{
    QByteArray sealed = Encryptor::encrypt(textOfLength(100000), passphrase);
    QByteArray flipped = sealed;
    flipped[99000] = char(flipped[99000] ^ 1);
    const auto outcome = [](QByteArray bytes, const QString &text = passphrase) {
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        Trickle pipe(bytes);
        const auto result = opened(file, text);
        EXPECT_EQ(result, opened(pipe, text));
        return std::get<CryptorError::Code>(result);
    };
    EXPECT_EQ(outcome(flipped), CryptorError::invalidHMAC);
    EXPECT_EQ(outcome(sealed, u"another"_s), CryptorError::invalidHMAC);
    EXPECT_EQ(outcome(sealed.chopped(1)), CryptorError::invalidHMAC);
    EXPECT_EQ(outcome(sealed.first(20)), CryptorError::truncatedFile);
    EXPECT_EQ(outcome("not a container at all, but long enough for a header"),
              CryptorError::invalidFileFormat);
}

TEST(Sealing, a_full_disk_and_a_failing_source_are_reported)
{
    QByteArray text = "short enough to stay in a file's buffer";
    QByteArray sealed = Encryptor::encrypt(text, passphrase);
    for (const QIODevice::OpenMode mode :
         { QIODevice::OpenMode(), QIODevice::OpenMode(QIODevice::Unbuffered) }) {
        for (const auto &[transfer, bytes] :
             { std::pair(&seal, &text), std::pair(&Pellarvine::open, &sealed) }) {
            QBuffer in(bytes);
            in.open(QIODevice::ReadOnly);
            QFile full(u"/dev/full"_s);
            ASSERT_TRUE(full.open(QIODevice::WriteOnly | mode));
            const auto run = transfer;
            EXPECT_EQ(transferError([&] { run(in, full, passphrase, {}); }),
                      std::pair(int(TransferError::writeFailed), u"No space left on device"_s));
        }
    }

    QProcess crashing;
    crashing.start(u"/bin/sh"_s, { u"-c"_s, u"echo half; kill -9 $$"_s });
    ASSERT_TRUE(crashing.waitForStarted());
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    EXPECT_THROW(seal(crashing, out, passphrase), TransferError);
}

TEST(Sealing, reports_progress_and_can_be_cancelled)
{
    QByteArray text = textOfLength(5 << 20);
    QBuffer in(&text);
    QBuffer sealed;
    in.open(QIODevice::ReadOnly);
    sealed.open(QIODevice::ReadWrite);
    std::vector<std::pair<qint64, qint64>> steps;
    Transfer transfer;
    transfer.progress = [&](qint64 done, qint64 total) {
        steps.emplace_back(done, total);
    };
    std::thread([&] { seal(in, sealed, passphrase, transfer); }).join();
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.back(), std::pair(qint64(text.size()), qint64(text.size())));

    std::stop_source stop;
    transfer.stop = stop.get_token();
    transfer.progress = [&](qint64 done, qint64 total) {
        EXPECT_EQ(total, 2 * sealed.size());
        if (done > sealed.size())
            stop.request_stop();
    };
    sealed.seek(0);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    EXPECT_EQ(transferError([&] { Pellarvine::open(sealed, out, passphrase, transfer); }).first,
              TransferError::cancelled);
}

TEST(SealingDevice, what_a_writer_writes_a_reader_reads)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(u"notes.sealed"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    SealingDevice sealed(&file, passphrase);
    ASSERT_TRUE(sealed.open(QIODevice::WriteOnly));
    QXmlStreamWriter writer(&sealed);
    writer.writeStartElement(u"notes"_s);
    for (int i = 0; i < 50000; ++i)
        writer.writeTextElement(u"note"_s, QString::number(i));
    writer.writeEndElement();
    EXPECT_TRUE(sealed.finish());
    EXPECT_FALSE(sealed.finish());
    EXPECT_FALSE(sealed.open(QIODevice::WriteOnly)) << "a second container under the same keys";
    file.close();

    for (const auto mode : { OpeningDevice::Mode::verifyFirst, OpeningDevice::Mode::unverified }) {
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        OpeningDevice text(&file, passphrase, mode);
        ASSERT_TRUE(text.open(QIODevice::ReadOnly)) << qPrintable(text.errorString());
        QXmlStreamReader reader(&text);
        int count = 0;
        while (!reader.atEnd())
            count += reader.readNext() == QXmlStreamReader::StartElement;
        EXPECT_EQ(reader.error(), QXmlStreamReader::NoError) << qPrintable(reader.errorString());
        EXPECT_EQ(count, 50001);
        EXPECT_TRUE(text.atEnd());
        EXPECT_EQ(text.error(), std::nullopt);
        file.close();
    }
}

TEST(SealingDevice, a_full_disk_is_reported_by_open_or_finish)
{
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    SealingDevice sealed(&full, passphrase);
    EXPECT_FALSE(sealed.open(QIODevice::WriteOnly));
    EXPECT_EQ(sealed.write("text"), -1);
    EXPECT_FALSE(sealed.finish());
    EXPECT_EQ(sealed.errorString(), u"No space left on device"_s);

    QFile buffered(u"/dev/full"_s);
    ASSERT_TRUE(buffered.open(QIODevice::WriteOnly));
    SealingDevice later(&buffered, passphrase);
    EXPECT_TRUE(later.open(QIODevice::WriteOnly));
    EXPECT_EQ(later.write("text"), 4);
    EXPECT_FALSE(later.finish());
    EXPECT_EQ(later.errorString(), u"No space left on device"_s);
}

TEST(Sealing, a_device_that_is_not_open_is_an_error_with_a_text)
{
    QBuffer closed;
    const QString unknown = closed.errorString(); // Qt's text for a device without an error
    const QString notReadable = u"The device is not open for reading."_s;
    const QString notWritable = u"The device is not open for writing."_s;

    SealingDevice sealed(&closed, passphrase);
    EXPECT_NE(sealed.errorString(), unknown);
    EXPECT_FALSE(sealed.finish());
    EXPECT_NE(sealed.errorString(), unknown);
    EXPECT_FALSE(sealed.open(QIODevice::ReadWrite));
    EXPECT_EQ(sealed.errorString(), u"The device can be opened only once, and only for writing."_s);
    EXPECT_FALSE(sealed.open(QIODevice::WriteOnly)); // the target is not open
    EXPECT_EQ(sealed.errorString(), notWritable);

    OpeningDevice text(&closed, passphrase);
    EXPECT_NE(text.errorString(), unknown);
    EXPECT_FALSE(text.open(QIODevice::ReadWrite));
    EXPECT_EQ(text.errorString(), u"The device can be opened only once, and only for reading."_s);
    EXPECT_FALSE(text.open(QIODevice::ReadOnly));
    EXPECT_EQ(text.errorString(), notReadable);

    QFile missing(u"/nowhere/missing"_s);
    EXPECT_FALSE(missing.open(QIODevice::ReadOnly)); // sets its error
    QBuffer open;
    ASSERT_TRUE(open.open(QIODevice::ReadWrite));
    const std::tuple<QIODevice *, QIODevice *, QString> rows[] = {
        { &closed, &open, notReadable },
        { &open, &closed, notWritable },
        { &missing, &open, u"No such file or directory"_s },
    };
    for (const auto &[in, out, message] : rows) {
        EXPECT_EQ(transferError([from = in, to = out] { seal(*from, *to, passphrase); }).second,
                  message);
    }
}

TEST(OpeningDevice, a_wrong_passphrase_shows_before_any_text_or_with_the_last_read)
{
    QByteArray bytes = Encryptor::encrypt(textOfLength(3 << 20), passphrase);
    QBuffer source(&bytes);
    source.open(QIODevice::ReadOnly);
    OpeningDevice verified(&source, u"another"_s);
    EXPECT_FALSE(verified.open(QIODevice::ReadOnly));
    EXPECT_EQ(verified.error(), CryptorError(CryptorError::invalidHMAC));
    EXPECT_EQ(verified.errorString(), u"The passphrase is wrong, or the container is damaged."_s);
    EXPECT_EQ(verified.read(1), QByteArray());

    source.seek(0);
    OpeningDevice early(&source, u"another"_s, OpeningDevice::Mode::unverified);
    ASSERT_TRUE(early.open(QIODevice::ReadOnly));
    char piece[4096];
    qint64 count = 0;
    qint64 total = 0;
    while ((count = early.read(piece, sizeof piece)) > 0)
        total += count;
    EXPECT_EQ(count, -1);
    EXPECT_GT(total, 0);
    EXPECT_TRUE(early.atEnd());
    EXPECT_EQ(early.error(), CryptorError(CryptorError::invalidHMAC));
}

TEST(Hashing, a_process_is_read_to_its_end_and_a_crash_is_an_error)
{
    QProcess slow;
    slow.start(u"/bin/sh"_s, { u"-c"_s, u"printf ab; sleep 0.2; printf c"_s });
    EXPECT_EQ(hashed(slow, HashingAlgorithm::sha1)->toHex(),
              "a9993e364706816aba3e25717850c26c9cd0d89d");
    slow.waitForFinished();
    QProcess crashing;
    crashing.start(u"/bin/sh"_s, { u"-c"_s, u"printf abc; kill -9 $$"_s });
    EXPECT_EQ(hashed(crashing, HashingAlgorithm::sha1), std::nullopt);
}

TEST(Hashing, a_socket_is_read_until_the_other_side_closes_it)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QTcpSocket client;
    client.connectToHost(server.serverAddress(), server.serverPort());
    ASSERT_TRUE(client.waitForConnected());
    ASSERT_TRUE(server.waitForNewConnection(5000));
    QTcpSocket *const peer = server.nextPendingConnection();
    peer->write("abc");
    ASSERT_TRUE(peer->waitForBytesWritten());
    peer->disconnectFromHost();
    const auto digest = hashed(client, HashingAlgorithm::sha1);
    ASSERT_TRUE(digest) << qPrintable(client.errorString());
    EXPECT_EQ(digest->toHex(), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

} // namespace Pellarvine
