// The real program behind a real loopback socket: who gets answers, who does not, and when it ends.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <string>
#include <vector>

#include "platform/linux/command.h"
#include "platform/linux/connection.h"
#include "platform/linux/server.h"
#include "platform/linux/system_files.h"

using namespace helper;
using namespace helper_protocol;

namespace {

using Bytes = std::vector<uint8_t>;

// A running helper that watches a process of the test.
struct Program {
    pid_t watched = 0;
    uint16_t port = 0;
    std::string token;

    Program() {
        watched = fork();
        if (watched == 0) {
            pause();
            _exit(0);
        }
        // In the background: the command returns only when it is ready and has let go of its output.
        const CommandResult started =
            RunCommand({QUORVANE_HELPER_PROGRAM, "--background", "--watch-pid", std::to_string(watched)}, 5000);
        EXPECT_EQ(0, started.exitCode);
        port = static_cast<uint16_t>(std::stoi(Behind(started.output, "PORT=")));
        token = Behind(started.output, "TOKEN=").substr(0, kTokenDigits);
    }

    ~Program() { EndWatched(); }

    void EndWatched() {
        if (watched != 0) {
            kill(watched, SIGKILL);
            waitpid(watched, nullptr, 0);
            watched = 0;
        }
    }

    static std::string Behind(const std::string& text, const std::string& mark) {
        return text.substr(text.find(mark) + mark.size());
    }
};

ScopedDescriptor Connect(uint16_t port) {
    ScopedDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const bool isConnected = connect(client.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
    return isConnected ? std::move(client) : ScopedDescriptor();
}

void Send(const ScopedDescriptor& client, std::span<const uint8_t> bytes) {
    send(client.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

Bytes Opening(const std::string& token) {
    Bytes opening(kOpeningBytes);
    EncodeOpening(opening, token);
    return opening;
}

// One that opened with the token.
ScopedDescriptor Friend(const Program& program) {
    ScopedDescriptor client = Connect(program.port);
    Send(client, Opening(program.token));
    return client;
}

Bytes Encoded(const Request& request, uint32_t sequence = 1) {
    Bytes message(kMaxMessageBytes);
    message.resize(EncodeRequest(message, sequence, request));
    return message;
}

// What arrives until `count` bytes are there, the connection ends or nothing more comes.
Bytes Receive(const ScopedDescriptor& client, size_t count) {
    Bytes bytes(count);
    size_t have = 0;
    pollfd wait{client.Get(), POLLIN, 0};
    while (have < count && poll(&wait, 1, 3000) > 0) {
        const ssize_t length = recv(client.Get(), &bytes[have], count - have, 0);
        if (length <= 0) {
            break;
        }
        have += static_cast<size_t>(length);
    }
    bytes.resize(have);
    return bytes;
}

// True when the server has closed the connection and said nothing before.
bool IsClosedSilently(const ScopedDescriptor& client, int timeoutMs = 3000) {
    pollfd wait{client.Get(), POLLIN, 0};
    uint8_t byte = 0;
    return poll(&wait, 1, timeoutMs) == 1 && recv(client.Get(), &byte, 1, 0) <= 0;
}

const Request kLeaseRequest = {RequestKind::kLeaseState, "lo", 0, 0, {}};
constexpr size_t kLeaseAnswerBytes = kHeaderBytes + 4 + 21;

bool AnswersLease(const ScopedDescriptor& client) {
    Send(client, Encoded(kLeaseRequest));
    return Receive(client, kLeaseAnswerBytes).size() == kLeaseAnswerBytes;
}

}  // namespace

TEST(HelperServer, The_token_opens_and_anything_else_ends_the_connection_without_an_answer) {
    const Program program;
    const ScopedDescriptor good = Friend(program);
    EXPECT_TRUE(AnswersLease(good));
    std::string wrong = program.token;
    wrong.back() = wrong.back() == '0' ? '1' : '0';
    Bytes version = Opening(program.token);
    version[4] = 99;
    Bytes oversized = Encoded(kLeaseRequest);
    oversized[2] = 2;  // 131,072 bytes
    Bytes unknown = Encoded(kLeaseRequest);
    unknown[6] = 77;
    const Bytes opening = Opening(program.token);
    const std::pair<Bytes, Bytes> refused[] = {{Opening(wrong), Encoded(kLeaseRequest)},
                                               {version, Encoded(kLeaseRequest)},
                                               {Bytes(kOpeningBytes, 'G'), {}},
                                               {opening, oversized},
                                               {opening, unknown},
                                               {opening, Encoded({RequestKind::kRelease, "-r", 0, 0, {}})}};
    for (const auto& [first, second] : refused) {
        const ScopedDescriptor stranger = Connect(program.port);
        Send(stranger, first);
        Send(stranger, second);
        EXPECT_TRUE(IsClosedSilently(stranger));
    }
    EXPECT_TRUE(AnswersLease(good));
}

TEST(HelperServer, A_client_that_says_nothing_or_half_a_message_is_dropped_and_holds_nobody_up) {
    const Program program;
    const ScopedDescriptor silent = Connect(program.port);
    const ScopedDescriptor half = Connect(program.port);
    const ScopedDescriptor idle = Friend(program);
    Send(half, Opening(program.token));
    Send(half, std::span<const uint8_t>(Encoded(kLeaseRequest)).first(13));
    const long long start = NowMs();
    EXPECT_TRUE(AnswersLease(idle));
    EXPECT_LT(NowMs() - start, 500);
    EXPECT_TRUE(IsClosedSilently(silent, kOpeningBoundMs + 1000));
    EXPECT_GE(NowMs() - start, kOpeningBoundMs - 100);
    EXPECT_TRUE(IsClosedSilently(half, kProgressBoundMs + 1000));
    EXPECT_TRUE(AnswersLease(idle));  // silence between messages is nobody's fault
}

TEST(HelperServer, A_message_may_come_byte_by_byte_and_several_at_once) {
    const Program program;
    const ScopedDescriptor client = Connect(program.port);
    Bytes all = Opening(program.token);
    for (const uint32_t sequence : {1u, 2u, 3u}) {
        const Bytes message = Encoded(kLeaseRequest, sequence);
        all.insert(all.end(), message.begin(), message.end());
    }
    for (const uint8_t byte : all) {
        Send(client, std::span(&byte, 1));
        poll(nullptr, 0, 2);
    }
    const Bytes answers = Receive(client, 3 * kLeaseAnswerBytes);
    ASSERT_EQ(3 * kLeaseAnswerBytes, answers.size());
    MessageHeader last;
    ASSERT_TRUE(DecodeHeader(std::span(answers).last(kLeaseAnswerBytes), last));
    EXPECT_EQ(3u, last.sequence);
}

TEST(HelperServer, Many_strangers_do_not_keep_a_friend_out) {
    const Program program;
    std::vector<ScopedDescriptor> strangers;
    for (size_t i = 0; i < 2 * kMaxConnections; ++i) {
        strangers.push_back(Connect(program.port));
    }
    std::vector<ScopedDescriptor> friends;
    for (size_t i = 0; i < kMaxConnections; ++i) {
        friends.push_back(Friend(program));
        EXPECT_TRUE(AnswersLease(friends.back())) << i;
    }
    EXPECT_TRUE(IsClosedSilently(Connect(program.port)));
    friends.erase(friends.begin());
    poll(nullptr, 0, 100);
    EXPECT_TRUE(AnswersLease(Friend(program)));
}

TEST(HelperServer, A_client_that_takes_no_answers_is_dropped) {
    const Program program;
    const ScopedDescriptor client = Friend(program);
    const Bytes message = Encoded({RequestKind::kRadioSet, "lo", 0, 0, {}});
    const long long start = NowMs();
    // Requests until the server has stopped reading them, then until it gives the connection up.
    while (send(client.Get(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) > 0 || errno == EAGAIN) {
        ASSERT_LT(NowMs() - start, 4 * kProgressBoundMs);
        poll(nullptr, 0, errno == EAGAIN ? 50 : 0);
        errno = 0;
    }
    EXPECT_TRUE(AnswersLease(Friend(program)));
}

TEST(HelperServer, It_ends_with_the_process_it_watches) {
    Program program;
    const ScopedDescriptor client = Friend(program);
    EXPECT_TRUE(AnswersLease(client));
    program.EndWatched();
    EXPECT_TRUE(IsClosedSilently(client));
    // Its sockets close one after the other while it ends.
    const long long start = NowMs();
    while (Connect(program.port).IsOpen() && NowMs() - start < 5000) {
        poll(nullptr, 0, 10);
    }
    EXPECT_FALSE(Connect(program.port).IsOpen());
}

TEST(HelperProgram, It_takes_a_token_writes_its_port_and_refuses_what_it_does_not_know) {
    const std::string file = testing::TempDir() + "quorvane-port-" + std::to_string(getpid());
    const std::string self = std::to_string(getpid());
    const std::string token = "00112233445566778899aabbccddeeff";
    const CommandResult started = RunCommand({"env", "QUORVANE_HELPER_TOKEN=" + token, QUORVANE_HELPER_PROGRAM,
                                              "--background", "--watch-pid", self, "--port-file", file},
                                             5000);
    FileText port;
    ASSERT_TRUE(ReadSmallFile(file, port));
    unlink(file.c_str());
    EXPECT_EQ("export QUORVANE_HELPER_PORT=" + port.text + "export QUORVANE_HELPER_TOKEN=" + token + "\n",
              started.output);
    const ScopedDescriptor client = Connect(static_cast<uint16_t>(std::stoi(port.text)));
    Send(client, Opening(token));
    EXPECT_TRUE(AnswersLease(client));

    for (const char* pid : {"", "x", "999999999"}) {
        const CommandResult refused = RunCommand({QUORVANE_HELPER_PROGRAM, "--watch-pid", pid}, 5000);
        EXPECT_EQ(1, refused.exitCode);
        EXPECT_EQ("", refused.output);
    }
}

TEST(Command, Time_output_and_success_are_bounded_and_told) {
    EXPECT_FALSE(RunCommand({"no-such-program-here"}, 1000).started);
    const CommandResult words = RunCommand({"printf", "%s|", "a b", "$HOME"}, 1000);
    EXPECT_EQ("a b|$HOME|", words.output);
    EXPECT_EQ(7, RunCommand({"sh", "-c", "exit 7"}, 1000).exitCode);
    EXPECT_EQ(kMaxCommandOutput, RunCommand({"head", "-c", "300000", "/dev/zero"}, 3000).output.size());

    const long long start = NowMs();
    const CommandResult endless = RunCommand({"sh", "-c", "sleep 60 & sleep 60"}, 300);
    EXPECT_TRUE(endless.timedOut);
    EXPECT_EQ(-1, endless.exitCode);
    // What a daemon does: it lives on with the output still open.
    EXPECT_EQ(0, RunCommand({"sh", "-c", "setsid sleep 2 & exit 0"}, 1500).exitCode);
    EXPECT_LT(NowMs() - start, 1500);
}
