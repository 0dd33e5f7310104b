// The real program behind a real loopback socket: who gets answers, who does not, and when it ends.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>

#include "platform/linux/command.h"
#include "platform/linux/connection.h"
#include "tests/unit/helper/messages.h"

using namespace helper;
using namespace helper_protocol;

namespace {

// A running helper that watches a process of the test.
struct HelperServer : testing::Test {
    pid_t watched = fork();
    uint16_t port = 0;
    Bytes opening;

    HelperServer() {
        if (watched == 0) {
            pause();
            _exit(0);
        }
        // In the background: the command returns only when it is ready and has let go of its output.
        const std::string output =
            RunCommand({QUORVANE_HELPER_PROGRAM, "--background", "--watch-pid", std::to_string(watched)}, 5000).output;
        port = static_cast<uint16_t>(std::stoi(output.substr(output.find("PORT=") + 5)));
        opening = Opening(output.substr(output.find("TOKEN=") + 6, kTokenDigits));
    }
    ~HelperServer() override { kill(watched, SIGKILL); }

    ScopedDescriptor Connect(const Bytes& firstBytes) const {
        ScopedDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
        const timeval bound{kProgressBoundMs / 1000 + 1, 0};
        setsockopt(client.Get(), SOL_SOCKET, SO_RCVTIMEO, &bound, sizeof(bound));
        EXPECT_EQ(0, connect(client.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
        send(client.Get(), firstBytes.data(), firstBytes.size(), MSG_NOSIGNAL);
        return client;
    }
};

// Whether two lease requests at once get both their answers.
bool AnswersLeases(const ScopedDescriptor& client) {
    const Bytes requests = kLeaseRequest + kLeaseRequest;
    send(client.Get(), requests.data(), requests.size(), MSG_NOSIGNAL);
    Bytes answers(2 * (kHeaderBytes + 4 + 21));
    return recv(client.Get(), answers.data(), answers.size(), MSG_WAITALL) == static_cast<ssize_t>(answers.size());
}

// Waits until the server has closed the connection; false when it says something, or does not close it.
bool IsClosedSilently(const ScopedDescriptor& client) {
    uint8_t byte = 0;
    const ssize_t received = recv(client.Get(), &byte, 1, 0);
    return received == 0 || (received < 0 && errno == ECONNRESET);
}

TEST_F(HelperServer, The_token_opens_and_anything_else_ends_the_connection_without_an_answer) {
    const ScopedDescriptor good = Connect(opening);
    const Bytes refused[] = {
        WithByte(opening, kOpeningBytes - 1, opening.back() ^ 1) + kLeaseRequest,
        WithByte(opening, 4, 99) + kLeaseRequest,    // version
        opening + WithByte(kLeaseRequest, 2, 2),     // 131,072 bytes
        opening + WithByte(kLeaseRequest, 6, 77),    // kind
        opening + WithByte(kLeaseRequest, 13, '-'),  // an option instead of a name
    };
    for (const Bytes& bytes : refused) {
        EXPECT_TRUE(IsClosedSilently(Connect(bytes)));
    }
    EXPECT_TRUE(AnswersLeases(good));
    kill(watched, SIGKILL);
    EXPECT_TRUE(IsClosedSilently(good)) << "it ends with the process it watches";
}

TEST_F(HelperServer, A_client_that_says_nothing_or_half_a_message_is_dropped_and_holds_nobody_up) {
    const ScopedDescriptor silent = Connect({}), half = Connect(opening + Bytes{1, 0, 0}), idle = Connect(opening);
    const long long start = NowMs();
    EXPECT_TRUE(AnswersLeases(idle));
    EXPECT_LT(NowMs() - start, 500);
    EXPECT_TRUE(IsClosedSilently(silent));
    EXPECT_GE(NowMs() - start, kOpeningBoundMs - 100);
    EXPECT_TRUE(IsClosedSilently(half));
    EXPECT_TRUE(AnswersLeases(idle));  // silence between messages is nobody's fault
}

}  // namespace
