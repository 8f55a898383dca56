// SPDX-License-Identifier: MIT
// ticket_program WAY: posts tickets that get no answer, and ends as WAY says. Prints a line for
// each call of a callback: the error's code, and the thread if it was the main one.
#include "Ostrevane/TicketRequest.h"

#include <QCoreApplication>
#include <QTimer>

#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <sys/socket.h>
#include <thread>

using namespace Qt::StringLiterals;
using Pellarvine::CodebaseTicket;

// Qt waits until its threads have finished their work, but not until they have ended. When a thread
// ends, the TLS library frees memory, and the process may end earlier.
extern "C" __attribute__((visibility("default"))) const char *
__lsan_default_suppressions() // NOLINT
{
    return "leak:libcrypto";
}

namespace {

const std::thread::id mainThread = std::this_thread::get_id();

// A port of this machine that accepts connections and never answers. Without `isListening`, it
// refuses them.
QString makeAddress(bool isListening)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *const generic = reinterpret_cast<sockaddr *>(&address);
    if (bind(descriptor, generic, length) != 0 || getsockname(descriptor, generic, &length) != 0
        || (isListening && listen(descriptor, 16) != 0))
        std::abort();
    return u"https://127.0.0.1:%1/"_s.arg(ntohs(address.sin_port));
}

void report(const std::optional<NS::URLError> &error)
{
    std::printf("%d%s\n", error ? int(error->code) : 0,
                std::this_thread::get_id() == mainThread ? " main" : "");
    std::fflush(stdout);
}

void post(bool isListening = true, const CodebaseTicket::Callback &callback = &report)
{
    const CodebaseTicket ticket(u"Crash"_s, u"Twice"_s);
    Pellarvine::detail::TicketRequest(ticket, makeAddress(isListening)).send(callback);
}

struct PostsWhenDestroyed
{
    ~PostsWhenDestroyed() { post(); }
};

// Lets the transfers start.
void waitABit()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

} // namespace

int main(int argc, char **argv)
{
    const std::string_view way = argc > 1 ? argv[1] : "";
    if (way == "without-application") {
        post();
        waitABit();
        post();
        return 0;
    }
    if (way == "heap-application") {
        new QCoreApplication(argc, argv);
        post();
        waitABit();
        post();
        return 0;
    }
    if (way == "static-destructor") {
        static const PostsWhenDestroyed object;
        new QCoreApplication(argc, argv);
        post();
        return 0;
    }

    auto application = std::make_unique<QCoreApplication>(argc, argv);
    if (way == "return") {
        post();
        waitABit();
        post();
    } else if (way == "quit") {
        post();
        QTimer::singleShot(100, application.get(), &QCoreApplication::quit);
        return QCoreApplication::exec();
    } else if (way == "exit") {
        post();
        waitABit();
        post();
        std::exit(0);
    } else if (way == "exit-at-once") {
        post();
        std::exit(0);
    } else if (way == "exit-after") {
        post();
        post();
        std::this_thread::sleep_for(std::chrono::microseconds(QByteArray(argv[2]).toInt()));
        post();
        std::exit(0);
    } else if (way == "exit-in-callback") {
        post();
        waitABit();
        post(false, [](const auto &error) {
            report(error);
            std::exit(0);
        });
        std::this_thread::sleep_for(std::chrono::seconds(30));
    } else if (way == "second-application") {
        post();
        application.reset();
        post();
        waitABit();
        application = std::make_unique<QCoreApplication>(argc, argv);
        post(false);
        waitABit();
    } else {
        return 2;
    }
    return 0;
}
