// The real program behind a real loopback socket: who gets answers, who does not, and when it ends.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include "platform/linux/command.h"
#include "platform/linux/connection.h"
#include "platform/linux/server.h"
#include "platform/linux/system_files.h"
#include "tests/unit/helper/messages.h"

using namespace helper;
using namespace helper_protocol;

namespace {

ScopedDescriptor Connect(uint16_t port, const Bytes& firstBytes = {}) {
    ScopedDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
    if (connect(client.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        return ScopedDescriptor();
    }
    send(client.Get(), firstBytes.data(), firstBytes.size(), MSG_NOSIGNAL);
    return client;
}

// A running helper that watches a process of the test.
struct HelperServer : testing::Test {
    pid_t watched = fork();
    uint16_t port = 0;
    std::string token;

    HelperServer() {
        if (watched == 0) {
            pause();
            _exit(0);
        }
        // In the background: the command returns only when it is ready and has let go of its output.
        const std::string output =
            RunCommand({QUORVANE_HELPER_PROGRAM, "--background", "--watch-pid", std::to_string(watched)}, 5000).output;
        port = static_cast<uint16_t>(std::stoi(output.substr(output.find("PORT=") + 5)));
        token = output.substr(output.find("TOKEN=") + 6, kTokenDigits);
    }
    ~HelperServer() override {
        kill(watched, SIGKILL);
        waitpid(watched, nullptr, 0);
    }

    // One that opened with the token.
    ScopedDescriptor Friend(const Bytes& request = {}) const { return Connect(port, Opening(token) + request); }
};

const Bytes kLeaseRequest = RequestMessage({RequestKind::kLeaseState, "lo", 0, 0, {}});
constexpr size_t kLeaseAnswerBytes = kHeaderBytes + 4 + 21;

// Whether so many lease requests at once get all their answers.
bool AnswersLease(const ScopedDescriptor& client, size_t requests = 1) {
    for (size_t i = 0; i < requests; ++i) {
        send(client.Get(), kLeaseRequest.data(), kLeaseRequest.size(), MSG_NOSIGNAL);
    }
    Bytes answers(requests * kLeaseAnswerBytes);
    const timeval bound{3, 0};
    setsockopt(client.Get(), SOL_SOCKET, SO_RCVTIMEO, &bound, sizeof(bound));
    return recv(client.Get(), answers.data(), answers.size(), MSG_WAITALL) == static_cast<ssize_t>(answers.size());
}

// True when the server has closed the connection and said nothing before.
bool IsClosedSilently(const ScopedDescriptor& client, int timeoutMs = 3000) {
    pollfd wait{client.Get(), POLLIN, 0};
    uint8_t byte = 0;
    return poll(&wait, 1, timeoutMs) == 1 && recv(client.Get(), &byte, 1, 0) <= 0;
}

Bytes WithByte(Bytes message, size_t at, uint8_t value) {
    message[at] = value;
    return message;
}

TEST_F(HelperServer, The_token_opens_and_anything_else_ends_the_connection_without_an_answer) {
    const ScopedDescriptor good = Friend();
    EXPECT_TRUE(AnswersLease(good, 3));
    const Bytes opening = Opening(token);
    const Bytes refused[] = {
        WithByte(opening, kOpeningBytes - 1, opening.back() ^ 1) + kLeaseRequest,
        WithByte(opening, 4, 99) + kLeaseRequest,  // version
        Bytes(kOpeningBytes, 'G'),
        opening + WithByte(kLeaseRequest, 2, 2),   // 131,072 bytes
        opening + WithByte(kLeaseRequest, 6, 77),  // kind
        opening + RequestMessage({RequestKind::kRelease, "-r", 0, 0, {}}),
    };
    for (const Bytes& bytes : refused) {
        EXPECT_TRUE(IsClosedSilently(Connect(port, bytes)));
    }
    EXPECT_TRUE(AnswersLease(good));
}

TEST_F(HelperServer, A_client_that_says_nothing_or_half_a_message_is_dropped_and_holds_nobody_up) {
    const ScopedDescriptor silent = Connect(port);
    const ScopedDescriptor half = Friend(Bytes(kLeaseRequest.begin(), kLeaseRequest.begin() + 13));
    const ScopedDescriptor idle = Friend();
    const long long start = NowMs();
    EXPECT_TRUE(AnswersLease(idle));
    EXPECT_LT(NowMs() - start, 500);
    EXPECT_TRUE(IsClosedSilently(silent, kOpeningBoundMs + 1000));
    EXPECT_GE(NowMs() - start, kOpeningBoundMs - 100);
    EXPECT_TRUE(IsClosedSilently(half, kProgressBoundMs + 1000));
    EXPECT_TRUE(AnswersLease(idle));  // silence between messages is nobody's fault
}

TEST_F(HelperServer, Many_strangers_do_not_keep_a_friend_out) {
    std::vector<ScopedDescriptor> strangers, friends;
    for (size_t i = 0; i < 2 * kMaxConnections; ++i) {
        strangers.push_back(Connect(port));
    }
    for (size_t i = 0; i < kMaxConnections; ++i) {
        friends.push_back(Friend());
        EXPECT_TRUE(AnswersLease(friends.back())) << i;
    }
    EXPECT_TRUE(IsClosedSilently(Connect(port)));
    EXPECT_TRUE(AnswersLease(friends.front()));
    friends.erase(friends.begin());
    poll(nullptr, 0, 100);
    EXPECT_TRUE(AnswersLease(Friend()));
}

TEST_F(HelperServer, A_client_that_takes_no_answers_is_dropped) {
    const ScopedDescriptor client = Friend();
    const Bytes message = RequestMessage({RequestKind::kRadioSet, "lo", 0, 0, {}});
    const long long start = NowMs();
    // Requests until the server has stopped reading them, then until it gives the connection up.
    while (send(client.Get(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) > 0 || errno == EAGAIN) {
        ASSERT_LT(NowMs() - start, 4 * kProgressBoundMs);
        poll(nullptr, 0, errno == EAGAIN ? 50 : 0);
        errno = 0;
    }
    EXPECT_TRUE(AnswersLease(Friend()));
}

TEST_F(HelperServer, It_ends_with_the_process_it_watches) {
    const ScopedDescriptor client = Friend();
    EXPECT_TRUE(AnswersLease(client));
    kill(watched, SIGKILL);
    EXPECT_TRUE(IsClosedSilently(client));
    // Its sockets close one after the other while it ends.
    const long long start = NowMs();
    while (Connect(port).IsOpen() && NowMs() - start < 5000) {
        poll(nullptr, 0, 10);
    }
    EXPECT_FALSE(Connect(port).IsOpen());
}

TEST(HelperProgram, It_takes_a_token_writes_its_port_and_refuses_what_it_does_not_know) {
    const std::string self = std::to_string(getpid());
    const std::string file = testing::TempDir() + "quorvane-port-" + self;
    const std::string token = kToken;
    const CommandResult started = RunCommand({"env", "QUORVANE_HELPER_TOKEN=" + token, QUORVANE_HELPER_PROGRAM,
                                              "--background", "--watch-pid", self, "--port-file", file},
                                             5000);
    FileText port;
    ASSERT_TRUE(ReadSmallFile(file, port));
    unlink(file.c_str());
    EXPECT_EQ("export QUORVANE_HELPER_PORT=" + port.text + "export QUORVANE_HELPER_TOKEN=" + token + "\n",
              started.output);
    EXPECT_TRUE(AnswersLease(Connect(static_cast<uint16_t>(std::stoi(port.text)), Opening(token))));
    for (const char* pid : {"", "x", "999999999"}) {
        const CommandResult refused = RunCommand({QUORVANE_HELPER_PROGRAM, "--watch-pid", pid}, 5000);
        EXPECT_EQ(std::pair(1, std::string()), std::pair(refused.exitCode, refused.output));
    }
}

TEST(Command, Time_output_and_success_are_bounded_and_told) {
    EXPECT_FALSE(RunCommand({"no-such-program-here"}, 1000).started);
    EXPECT_EQ("a b|$HOME|", RunCommand({"printf", "%s|", "a b", "$HOME"}, 1000).output);
    EXPECT_EQ(7, RunCommand({"sh", "-c", "exit 7"}, 1000).exitCode);
    EXPECT_EQ(kMaxCommandOutput, RunCommand({"head", "-c", "300000", "/dev/zero"}, 3000).output.size());
    const long long start = NowMs();
    const CommandResult endless = RunCommand({"sh", "-c", "sleep 60 & sleep 60"}, 300);
    EXPECT_EQ(std::pair(true, -1), std::pair(endless.timedOut, endless.exitCode));
    // What a daemon does: it lives on with the output still open.
    EXPECT_EQ(0, RunCommand({"sh", "-c", "setsid sleep 2 & exit 0"}, 1500).exitCode);
    EXPECT_LT(NowMs() - start, 1500);
}

}  // namespace
