// SPDX-License-Identifier: MIT
// Compares sealing and opening with a plain loop over libcrypto on one thread, key derivation with
// two calls of PKCS5_PBKDF2_HMAC, and the command with the openssl command.
#include "Goals.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

constexpr qsizetype textLength = 64 << 20;
const QString passphrase = u"correct horse battery staple"_s;

const QByteArray &text()
{
    static const QByteArray bytes = [] {
        QByteArray made(textLength, Qt::Uninitialized);
        std::independent_bits_engine<std::mt19937, 8, unsigned> random;
        for (char &byte : made)
            byte = char(random());
        return made;
    }();
    return bytes;
}

const QByteArray &container()
{
    static const QByteArray bytes = Encryptor::encrypt(text(), passphrase);
    return bytes;
}

template <typename Feed>
void forEachChunk(const QByteArray &bytes, qsizetype chunk, Feed feed)
{
    for (qsizetype start = 0; start < bytes.size(); start += chunk)
        feed(QByteArrayView(bytes).sliced(start, std::min(chunk, bytes.size() - start)));
}

void seal(benchmark::State &state)
{
    text();
    for (auto _ : state) {
        Encryptor encryptor(passphrase);
        forEachChunk(text(), state.range(0), [&](QByteArrayView chunk) {
            benchmark::DoNotOptimize(encryptor.feed(chunk).constData());
        });
        benchmark::DoNotOptimize(encryptor.finalize().constData());
    }
    state.SetBytesProcessed(state.iterations() * textLength);
}

void open(benchmark::State &state)
{
    container();
    for (auto _ : state) {
        Decryptor decryptor(passphrase);
        forEachChunk(container(), state.range(0), [&](QByteArrayView chunk) {
            benchmark::DoNotOptimize(decryptor.feed(chunk).constData());
        });
        benchmark::DoNotOptimize(decryptor.finalize().constData());
    }
    state.SetBytesProcessed(state.iterations() * textLength);
}

// A loop over libcrypto, written by hand: fetched algorithms, one output buffer.
class Bare
{
public:
    Bare(int direction, const unsigned char *key, const unsigned char *iv)
    {
        static EVP_CIPHER *const aes = EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr);
        static EVP_MAC *const hmac = EVP_MAC_fetch(nullptr, "HMAC", nullptr);
        m_cipher = EVP_CIPHER_CTX_new();
        EVP_CipherInit_ex2(m_cipher, aes, key, iv, direction, nullptr);
        char digest[] = "SHA256";
        const OSSL_PARAM parameters[] = { OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST,
                                                                           digest, 0),
                                          OSSL_PARAM_construct_end() };
        m_mac = EVP_MAC_CTX_new(hmac);
        EVP_MAC_init(m_mac, key, 32, parameters);
    }
    ~Bare()
    {
        EVP_CIPHER_CTX_free(m_cipher);
        EVP_MAC_CTX_free(m_mac);
    }
    Bare(const Bare &) = delete;
    Bare &operator=(const Bare &) = delete;

    int transform(QByteArrayView in, unsigned char *out)
    {
        int length = 0;
        EVP_CipherUpdate(m_cipher, out, &length, reinterpret_cast<const unsigned char *>(in.data()),
                         int(in.size()));
        return length;
    }
    void tag(const void *bytes, std::size_t length)
    {
        EVP_MAC_update(m_mac, static_cast<const unsigned char *>(bytes), length);
    }
    void finish(unsigned char *out)
    {
        int length = 0;
        EVP_CipherFinal_ex(m_cipher, out, &length);
        std::size_t tagLength = 0;
        EVP_MAC_final(m_mac, out, &tagLength, 32);
    }

private:
    EVP_CIPHER_CTX *m_cipher;
    EVP_MAC_CTX *m_mac;
};

void deriveKeys(unsigned char *keys)
{
    const QByteArray password = passphrase.toUtf8();
    const unsigned char salt[8] = { 1, 2, 3, 4, 5, 6, 7, 8 };
    for (int i = 0; i < 2; ++i)
        PKCS5_PBKDF2_HMAC(password.data(), int(password.size()), salt, 8, 10000, EVP_sha1(), 32,
                          keys + 32 * i);
}

void bareSeal(benchmark::State &state)
{
    text();
    std::vector<unsigned char> output(std::size_t(state.range(0)) + 64);
    for (auto _ : state) {
        unsigned char keys[64];
        deriveKeys(keys);
        Bare bare(1, keys, keys);
        forEachChunk(text(), state.range(0), [&](QByteArrayView chunk) {
            const int length = bare.transform(chunk, output.data());
            bare.tag(output.data(), std::size_t(length));
            benchmark::DoNotOptimize(output.data());
        });
        bare.finish(output.data());
    }
    state.SetBytesProcessed(state.iterations() * textLength);
}

// The cipher alone, and the tag alone. Each is sequential, and so the lower bound of the work.
void bareCipher(qsizetype chunkLength)
{
    static std::vector<unsigned char> output(std::size_t(chunkLength) + 64);
    unsigned char keys[64];
    deriveKeys(keys);
    Bare bare(1, keys, keys);
    forEachChunk(text(), chunkLength, [&](QByteArrayView chunk) {
        bare.transform(chunk, output.data());
        benchmark::DoNotOptimize(output.data());
    });
}

void bareTag(qsizetype chunkLength)
{
    unsigned char keys[64];
    deriveKeys(keys);
    Bare bare(1, keys, keys);
    forEachChunk(text(), chunkLength,
                 [&](QByteArrayView chunk) { bare.tag(chunk.data(), std::size_t(chunk.size())); });
    unsigned char tag[64];
    bare.finish(tag);
    benchmark::DoNotOptimize(tag);
}

void sealOnce(qsizetype chunkLength)
{
    Encryptor encryptor(passphrase);
    forEachChunk(text(), chunkLength, [&](QByteArrayView chunk) {
        benchmark::DoNotOptimize(encryptor.feed(chunk).constData());
    });
    benchmark::DoNotOptimize(encryptor.finalize().constData());
}

void openOnce(qsizetype chunkLength)
{
    Decryptor decryptor(passphrase);
    forEachChunk(container(), chunkLength, [&](QByteArrayView chunk) {
        benchmark::DoNotOptimize(decryptor.feed(chunk).constData());
    });
    benchmark::DoNotOptimize(decryptor.finalize().constData());
}

template <typename Work>
double secondsOf(Work work, qsizetype chunkLength)
{
    const auto start = std::chrono::steady_clock::now();
    work(chunkLength);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Runs both in turn, so that a slow moment of the machine affects both. The counter "ratio" is the
// median ratio of the pairs.
template <void (*subject)(qsizetype), void (*baseline)(qsizetype)>
void pairs(benchmark::State &state)
{
    constexpr int count = 7;
    container();
    std::vector<double> ratios;
    for (auto _ : state) {
        for (int i = 0; i < count; ++i) {
            const double time = secondsOf(subject, state.range(0));
            ratios.push_back(time / secondsOf(baseline, state.range(0)));
        }
    }
    state.counters["ratio"] = medianOf(ratios);
}

void bareOpen(benchmark::State &state)
{
    // Only the ciphertext, without the container's header and tag.
    const QByteArray body = container().sliced(36, textLength);
    std::vector<unsigned char> output(std::size_t(state.range(0)) + 64);
    for (auto _ : state) {
        unsigned char keys[64];
        deriveKeys(keys);
        Bare bare(0, keys, keys);
        forEachChunk(body, state.range(0), [&](QByteArrayView chunk) {
            bare.tag(chunk.data(), std::size_t(chunk.size()));
            bare.transform(chunk, output.data());
            benchmark::DoNotOptimize(output.data());
        });
        bare.finish(output.data());
    }
    state.SetBytesProcessed(state.iterations() * textLength);
}

void keySetUp(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Encryptor(passphrase).header());
}

void bareKeySetUp(benchmark::State &state)
{
    for (auto _ : state) {
        unsigned char keys[64];
        deriveKeys(keys);
        benchmark::DoNotOptimize(keys);
    }
}

// Feeds single bytes. A cost that depended on the earlier bytes would make the time quadratic.
void byteByByte(benchmark::State &state)
{
    const QByteArray bytes = text().first(state.range(0));
    Encryptor encryptor(passphrase);
    for (auto _ : state) {
        for (const char &byte : bytes)
            benchmark::DoNotOptimize(encryptor.feed({ &byte, 1 }).constData());
    }
}

// A file of 1 GiB, made once, and the commands' output files.
class Files
{
public:
    static constexpr qint64 length = qint64(1) << 30;

    Files()
    {
        std::ofstream plain(path("plain"), std::ios::binary);
        for (qint64 written = 0; written < length; written += textLength)
            plain.write(text().constData(), textLength);
        plain.close();
        std::ofstream(path("passphrase")) << passphrase.toStdString();
        run(command("seal", "plain", "sealed"));
        run(pipe("enc", "plain", "encrypted"));
    }

    std::string path(const std::string &name) const
    {
        return m_folder.filePath(QString::fromStdString(name)).toStdString();
    }

    std::string command(const std::string &verb, const std::string &from,
                        const std::string &to) const
    {
        return PELLARVINE_COMMAND " " + verb + " --force --passphrase-file " + path("passphrase")
               + " " + path(from) + " " + path(to);
    }

    // The same work by the openssl command, with a process for the cipher and one for the tag, and
    // the result flushed to disk. Unlike our command, openssl gets its keys and derives none.
    std::string pipe(const std::string &verb, const std::string &from, const std::string &to) const
    {
        const std::string key(64, 'a');
        const std::string iv(32, 'b');
        return "openssl " + verb + " -aes-256-cbc -K " + key + " -iv " + iv + " -in " + path(from)
               + " | tee " + path(to) + " | openssl dgst -sha256 -mac HMAC -macopt hexkey:" + key
               + " >/dev/null && sync " + path(to);
    }

    static void run(const std::string &line)
    {
        if (std::system(line.c_str()) != 0) {
            std::fprintf(stderr, "failed: %s\n", line.c_str());
            std::exit(1);
        }
    }

private:
    QTemporaryDir m_folder { QDir::currentPath() + u"/bench-XXXXXX"_s };
};

const Files &files()
{
    static const Files made;
    return made;
}

// Reads from the page cache and writes to tmpfs, without a disk, in turn with the cipher alone.
void commandToCipher(benchmark::State &state)
{
    const QTemporaryDir target(u"/dev/shm/bench-XXXXXX"_s);
    const std::string line = PELLARVINE_COMMAND " seal --force --passphrase-file "
                             + files().path("passphrase") + ' ' + files().path("plain") + ' '
                             + target.filePath(u"out"_s).toStdString();
    const auto cipher = [](qsizetype chunkLength) {
        for (qint64 done = 0; done < Files::length; done += textLength)
            bareCipher(chunkLength);
    };
    std::vector<double> ratios;
    for (auto _ : state) {
        for (int i = 0; i < 5; ++i) {
            const double time = secondsOf([&](qsizetype) { Files::run(line); }, 0);
            ratios.push_back(time / secondsOf(cipher, 1 << 20));
        }
    }
    state.counters["ratio"] = medianOf(ratios);
}

enum class Kind {
    seal,
    pipedSeal,
    open,
    pipedOpen,
};

template <Kind kind>
void command(benchmark::State &state)
{
    const std::string lines[] = {
        files().command("seal", "plain", "out"),
        files().pipe("enc", "plain", "out"),
        files().command("open", "sealed", "out"),
        files().pipe("enc -d", "encrypted", "out"),
    };
    for (auto _ : state)
        Files::run(lines[int(kind)]);
    state.SetBytesProcessed(state.iterations() * Files::length);
}

void chunkSizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(4 << 10)->Arg(64 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
    benchmark->UseRealTime();
}

void aFewTimes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Iterations(1)->Repetitions(5)->UseRealTime()->Unit(benchmark::kMillisecond);
}

void inPairs(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(64 << 10)->Arg(1 << 20)->Iterations(1)->Unit(benchmark::kMillisecond);
    benchmark->UseRealTime();
}

BENCHMARK(seal)->Name("container/seal")->Apply(chunkSizes);
BENCHMARK(bareSeal)->Name("container/seal-bare")->Apply(chunkSizes);
BENCHMARK(open)->Name("container/open")->Apply(chunkSizes);
BENCHMARK(bareOpen)->Name("container/open-bare")->Apply(chunkSizes);
BENCHMARK(pairs<sealOnce, bareCipher>)->Name("container/seal-to-cipher")->Apply(inPairs);
BENCHMARK(pairs<openOnce, bareTag>)->Name("container/open-to-tag")->Apply(inPairs);
BENCHMARK(keySetUp)->Name("container/keys")->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(bareKeySetUp)->Name("container/keys-bare")->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(byteByByte)
        ->Name("container/byte-by-byte")
        ->Arg(64 << 10)
        ->Arg(1 << 20)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
BENCHMARK(commandToCipher)
        ->Name("container/command-to-cipher")
        ->Iterations(1)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
BENCHMARK(command<Kind::seal>)->Name("container/command-seal")->Apply(aFewTimes);
BENCHMARK(command<Kind::pipedSeal>)->Name("container/command-seal-openssl")->Apply(aFewTimes);
BENCHMARK(command<Kind::open>)->Name("container/command-open")->Apply(aFewTimes);
BENCHMARK(command<Kind::pipedOpen>)->Name("container/command-open-openssl")->Apply(aFewTimes);

} // namespace

int main(int argc, char **argv)
{
    const auto speed = [](const std::string &work, const std::string &chunk) {
        return Goal { .name = "container/" + work + "/" + chunk,
                      .subject = "container/" + work + "/" + chunk,
                      .baseline = "container/" + work + "-bare/" + chunk,
                      .kind = Goal::speedAtLeast,
                      .limit = 0.97 };
    };
    return runBenchmarks(
            argc, argv,
            {
                    speed("seal", "65536"),
                    speed("seal", "1048576"),
                    speed("open", "65536"),
                    speed("open", "1048576"),
                    { .name = "container/seal/1MiB",
                      .subject = "container/seal-to-cipher/1048576",
                      .baseline = "ratio",
                      .kind = Goal::counterAtMost,
                      .limit = 1.15 },
                    { .name = "container/open/1MiB",
                      .subject = "container/open-to-tag/1048576",
                      .baseline = "ratio",
                      .kind = Goal::counterAtMost,
                      .limit = 1.15 },
                    { .name = "container/keys",
                      .subject = "container/keys",
                      .baseline = "container/keys-bare",
                      .limit = 1.02 },
                    // Sixteen times the bytes. Quadratic growth would be a factor of 256.
                    { .name = "container/byte-by-byte-growth",
                      .subject = "container/byte-by-byte/1048576",
                      .baseline = "container/byte-by-byte/65536",
                      .limit = 24.0 },
                    { .name = "container/command/seal",
                      .subject = "container/command-to-cipher",
                      .baseline = "ratio",
                      .kind = Goal::counterAtMost,
                      .limit = 1.25 },
                    { .name = "container/command-seal",
                      .subject = "container/command-seal",
                      .baseline = "container/command-seal-openssl",
                      .limit = 1.0 },
                    { .name = "container/command-open",
                      .subject = "container/command-open",
                      .baseline = "container/command-open-openssl",
                      .limit = 1.0 },
            });
}
