// fork, exec and a poll on the child's pidfd and its standard output.

#include "platform/linux/command.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>

#include "platform/linux/scoped_descriptor.h"

namespace helper {
namespace {

constexpr int kExecFailed = 127;

[[noreturn]] void Execute(const std::vector<std::string>& arguments, int output) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // whoever kept the time for it is gone; a daemon it forks is not concerned
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    close_range(3, ~0u, 0);
    const char* bus = getenv("DBUS_SYSTEM_BUS_ADDRESS");
    const std::string busAddress = bus != nullptr ? bus : "";
    clearenv();
    setenv("PATH", "/usr/sbin:/usr/bin:/sbin:/bin", 1);
    setenv("LC_ALL", "C", 1);
    if (!busAddress.empty()) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", busAddress.c_str(), 1);
    }
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(kExecFailed);
}

// Takes what there is to read; false at the end of the output.
bool TakeOutput(int output, std::string& text) {
    char block[4096];
    const ssize_t length = read(output, block, sizeof(block));
    if (length <= 0) {
        return length < 0 && (errno == EINTR || errno == EAGAIN);
    }
    text.append(block, std::min(static_cast<size_t>(length), kMaxCommandOutput - text.size()));
    return true;
}

// Collects output until the process has ended; false when the time is over first.
bool AwaitEnd(int process, ScopedDescriptor& output, long long deadline, std::string& text) {
    for (;;) {
        pollfd waits[2] = {{process, POLLIN, 0}, {output.Get(), POLLIN, 0}};
        const long long left = deadline - NowMs();
        if (left <= 0) {
            return false;
        }
        if (poll(waits, 2, static_cast<int>(left)) < 0 && errno != EINTR) {
            return false;
        }
        if (waits[1].revents != 0 && !TakeOutput(output.Get(), text)) {
            output.Close();
        } else if (waits[1].revents == 0 && waits[0].revents != 0) {
            return true;
        }
    }
}

}  // namespace

long long NowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

CommandResult RunCommand(const std::vector<std::string>& arguments, int timeoutMs) {
    const long long deadline = NowMs() + timeoutMs;
    CommandResult result;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return result;
    }
    ScopedDescriptor output(ends[0]);
    ScopedDescriptor input(ends[1]);
    const pid_t child = fork();
    if (child == 0) {
        fcntl(input.Get(), F_SETFL, 0);
        Execute(arguments, input.Get());
    }
    if (child < 0) {
        return result;
    }
    input.Close();
    const ScopedDescriptor process(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    result.timedOut = !process.IsOpen() || !AwaitEnd(process.Get(), output, deadline, result.output);
    if (result.timedOut) {
        kill(-child, SIGKILL);
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.started = result.exitCode != kExecFailed;
    return result;
}

}  // namespace helper
