// quorvane-helper: tells a Quorvane that runs under Wine what Wine cannot: the DHCP lease of an interface, with release
// and renewal, and the radio.
//
//     quorvane-helper [--watch-pid PID] [--background] [--port-file FILE]
//
// It listens on a port of 127.0.0.1 that the system chooses and prints, as soon as clients may connect,
//     export QUORVANE_HELPER_PORT=40123
//     export QUORVANE_HELPER_TOKEN=0123456789abcdef0123456789abcdef
// The token is the one of the environment variable QUORVANE_HELPER_TOKEN when that holds 32 hexadecimal digits, else a
// random one. --port-file also writes the port's digits to a file, which appears whole. It ends when process PID ends,
// or without --watch-pid when its parent does. With --background it returns when it is ready and goes on as a daemon,
// which needs --watch-pid. A script starts it like this, and need not end it:
//     eval "$(quorvane-helper --background --watch-pid $$)"
//     wine todayhost.exe
// Nothing is printed and the exit code is not 0 when it cannot start. Run as the superuser it can release and renew
// leases and ask the radio for a scan; as another user it answers queries, and those requests as far as the system's
// services let that user.

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/random.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/helper_protocol.h"
#include "platform/linux/lease_text.h"
#include "platform/linux/server.h"

namespace {

struct Options {
    std::optional<pid_t> watchedProcess;
    bool isInBackground = false;
    std::string portFile;
};

bool ParseOptions(int count, char** words, Options& options) {
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        const bool hasValue = i + 1 < count;
        if (word == "--background") {
            options.isInBackground = true;
        } else if (word == "--port-file" && hasValue) {
            options.portFile = words[++i];
        } else if (word == "--watch-pid" && hasValue) {
            const auto id = helper::ParseNumber(words[++i]);
            if (!id || *id == 0) {
                return false;
            }
            options.watchedProcess = static_cast<pid_t>(*id);
        } else {
            return false;
        }
    }
    return !options.isInBackground || options.watchedProcess;
}

// Empty when the system gives no randomness.
std::string MakeToken() {
    const char* given = getenv("QUORVANE_HELPER_TOKEN");
    if (given != nullptr && helper_protocol::IsToken(given)) {
        return given;
    }
    unsigned char random[helper_protocol::kTokenDigits / 2];
    if (getrandom(random, sizeof(random), 0) != static_cast<ssize_t>(sizeof(random))) {
        return {};
    }
    std::string token;
    for (const unsigned char byte : random) {
        constexpr char kDigits[] = "0123456789abcdef";
        token += kDigits[byte >> 4];
        token += kDigits[byte & 15];
    }
    return token;
}

bool WritePortFile(const std::string& path, const std::string& port) {
    if (path.empty()) {
        return true;
    }
    const std::string unfinished = path + ".new";
    FILE* file = fopen(unfinished.c_str(), "we");
    if (file == nullptr) {
        return false;
    }
    const bool isWritten = fputs((port + "\n").c_str(), file) >= 0;
    return fclose(file) == 0 && isWritten && rename(unfinished.c_str(), path.c_str()) == 0;
}

// The parent leaves once the child stands on its own: output closed, so that $(...) ends, and in no terminal's group.
void GoToBackground() {
    const pid_t child = fork();
    if (child != 0) {
        _exit(child > 0 ? 0 : 1);
    }
    setsid();
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    close(nothing);
}

int Fail(const char* what) {
    fprintf(stderr, "quorvane-helper: %s\n", what);
    return 1;
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!ParseOptions(count, words, options)) {
        return Fail("usage: quorvane-helper [--watch-pid PID [--background]] [--port-file FILE]");
    }
    const pid_t parent = getppid();
    helper::ScopedDescriptor watched;
    if (options.watchedProcess) {
        watched = helper::ScopedDescriptor(static_cast<int>(syscall(SYS_pidfd_open, *options.watchedProcess, 0)));
        if (!watched.IsOpen()) {
            return Fail("the process to watch is not there");
        }
    } else if (prctl(PR_SET_PDEATHSIG, SIGTERM) != 0 || getppid() != parent) {
        return Fail("the parent is gone");
    }
    const std::string token = MakeToken();
    uint16_t port = 0;
    const helper::ScopedDescriptor listener = helper::ListenOnLoopback(port);
    if (token.empty() || !listener.IsOpen() || !WritePortFile(options.portFile, std::to_string(port))) {
        return Fail("cannot listen");
    }
    printf("export QUORVANE_HELPER_PORT=%u\nexport QUORVANE_HELPER_TOKEN=%s\n", port, token.c_str());
    fflush(stdout);
    if (options.isInBackground) {
        GoToBackground();
    }
    helper::Serve(listener, watched.Get(), token);
    return 0;
}
