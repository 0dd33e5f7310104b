// platform/linux/command.h - runs another program to its end, within bounds of time and output.

#pragma once

#include <string>
#include <vector>

namespace helper {

inline constexpr size_t kMaxCommandOutput = 65536;

struct CommandResult {
    bool started = false;   // the program was found and executed
    bool timedOut = false;  // it was killed at the bound, with its process group
    int exitCode = -1;      // 0 to 255, -1 when it was killed or never ran
    std::string output;     // standard output, at most kMaxCommandOutput bytes
};

// Runs arguments[0] from the system's program folders, no shell between, with an empty standard input, a C locale and
// no environment but the system bus's address. Blocks for `timeoutMs` at most. A daemon that the command leaves behind
// is not waited for.
CommandResult RunCommand(const std::vector<std::string>& arguments, int timeoutMs);

// Milliseconds of the monotonic clock.
long long NowMs();

}  // namespace helper
