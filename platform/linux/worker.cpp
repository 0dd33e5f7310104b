// fork without exec: the server has one thread, so the child may run any code. It writes its answer into a pipe.

#include "platform/linux/worker.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/command.h"

namespace helper {
namespace {

using helper_protocol::RequestKind;

constexpr size_t kMaxAnswerBytes = 256;
constexpr int kLeaseBoundMs = 6000;
constexpr int kChangeBoundMs = kRenewBoundMs + 3000;  // a little above what the operation allows itself

size_t MakeAnswer(const Worker& worker, std::span<uint8_t> space, size_t& inCharge) {
    if (worker.kind == RequestKind::kLeaseState) {
        return EncodeLeaseAnswer(space, worker.header, ReadLeaseState(worker.clients, worker.interfaceName));
    }
    const uint32_t result = worker.kind == RequestKind::kRelease
                                ? ReleaseLease(worker.clients, worker.interfaceName, inCharge)
                                : RenewLease(worker.clients, worker.interfaceName, inCharge);
    return EncodeResult(space, worker.header, result);
}

[[noreturn]] void CarryOut(const Worker& worker, int output) {
    // The server's sockets must end with the server, not with a DHCP client that is started from here.
    dup2(output, STDOUT_FILENO);
    close_range(3, ~0u, 0);
    std::array<uint8_t, kMaxAnswerBytes> space;
    size_t inCharge = 0;
    const size_t length = MakeAnswer(worker, space, inCharge);
    const ssize_t written = write(STDOUT_FILENO, space.data(), length);
    // The exit code carries which client it was; an answer cut short is found out by its length.
    _exit(written > 0 ? static_cast<int>(inCharge) : 0);
}

void AnswerWith(Worker& worker, uint32_t result) {
    worker.answer.resize(kMaxAnswerBytes);
    worker.answer.resize(EncodeResult(worker.answer, worker.header, result));
}

}  // namespace

bool StartWorker(Worker& worker) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    worker.output = ScopedDescriptor(ends[0]);
    const ScopedDescriptor input(ends[1]);
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    worker.process = fork();
    if (worker.process == 0) {
        CarryOut(worker, input.Get());
    }
    worker.deadline = NowMs() + (worker.kind == RequestKind::kLeaseState ? kLeaseBoundMs : kChangeBoundMs);
    return worker.process > 0;
}

bool ContinueWorker(Worker& worker) {
    std::array<uint8_t, kMaxAnswerBytes> block;
    const ssize_t length = read(worker.output.Get(), block.data(), block.size());
    if (length > 0) {
        worker.answer.insert(worker.answer.end(), block.data(), block.data() + length);
        return false;
    }
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return false;
    }
    int status = 0;
    waitpid(worker.process, &status, 0);
    worker.inCharge = std::min<size_t>(WIFEXITED(status) ? WEXITSTATUS(status) : 0, worker.clients.size() - 1);
    helper_protocol::MessageHeader header;
    if (!helper_protocol::DecodeHeader(worker.answer, header) ||
        worker.answer.size() != helper_protocol::kHeaderBytes + header.bodyBytes) {
        AnswerWith(worker, helper_protocol::kResultGeneralFailure);
    }
    return true;
}

void GiveUpWorker(Worker& worker) {
    kill(worker.process, SIGKILL);
    waitpid(worker.process, nullptr, 0);
    AnswerWith(worker, helper_protocol::kResultTimeout);
}

}  // namespace helper
