// The walk itself. What it walked is in the test's output: "[  WALKED  ] 12 calls, 24 faults".
#include "tests/unit/native/fault_walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>

#include "item/settings.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

namespace fs = std::filesystem;

namespace {

using Contents = std::map<std::string, std::string>;

// Descriptors of the system and what the fakes handed out.
std::ptrdiff_t OpenResources() {
    return fakes::OpenResources() + std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

// Characters of one byte or two as such, other bytes as numbers, zeros as a space at most.
std::string Readable(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    char last = 0;
    for (char byte = 0; file.get(byte); last = byte) {
        if (isprint(byte) != 0 || (byte == '\n' && isprint(last) != 0)) {
            text += byte;
        } else if (byte != 0 || (last == 0 && !text.ends_with(' '))) {
            text += byte != 0 ? std::to_string(static_cast<uint8_t>(byte)) + " " : " ";
        }
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

Contents LookAround() {
    Contents found;
    for (const auto& entry : fs::recursive_directory_iterator(fakes::Root())) {
        if (entry.is_regular_file()) {
            found[entry.path().filename()] = Readable(entry.path());
        }
    }
    for (const wchar_t* name : {L"Adapter", L"XLocation", L"TIcon", L"TFormat"}) {
        wchar_t text[32];
        uint32_t number = 0;
        if (ReadStringSetting(name, text) || ReadNumberSetting(name, &number)) {
            found[Narrow(name)] = number != 0 ? std::to_string(number) : Narrow(text);
        }
    }
    if (!fakes::shownMessages.empty() && fakes::shownMessages.back().caption != L"Question") {
        found["told"] = Narrow(fakes::shownMessages.back().text);
    }
    return found;
}

// The outcome; `calls` are those until the faults ended.
std::string Outcome(std::string (*run)(), const Contents& before, int& calls) {
    fakes::shownMessages.clear();
    std::string outcome = run();
    calls = fakes::EndFaults();
    const Contents after = LookAround();
    for (const auto& [name, content] : before) {
        outcome += after.contains(name) ? "" : name + " gone;";
    }
    for (const auto& entry : after) {
        outcome += std::ranges::count(before, entry) != 0 ? "" : entry.first + ": " + entry.second + ";";
    }
    return outcome;
}

}  // namespace

void WalkFaults(const char* name, const Promise& promise, std::string (*run)()) {
    SCOPED_TRACE(name);
    const std::regex onFault(promise.onFault), again(promise.again);
    constexpr const char* kKinds[] = {"once", "from there on", "all of its function"};
    int faults = 0;
    int calls = 0;
    for (const int kind : {0, 1, 2}) {
        for (int nth = 1;; ++nth, ++faults) {
            ResetForTest();
            promise.prepare();
            const Contents before = LookAround();
            const std::ptrdiff_t resources = OpenResources();
            fakes::FailCall(nth, static_cast<fakes::Faults>(kind));
            const std::string outcome = Outcome(run, before, calls);
            const std::string fault = fakes::FailedCall() + ", call " + std::to_string(nth) +
                                      (", " + std::string(kKinds[kind])) + " gives " + outcome;
            EXPECT_EQ(OpenResources(), resources) << fault;
            if (calls < nth) {
                EXPECT_EQ(outcome, promise.whole);
                break;
            }
            EXPECT_TRUE(outcome == promise.whole || std::regex_match(outcome, onFault)) << fault;
            int callsOfRepetition = 0;
            const std::string repeated = Outcome(run, before, callsOfRepetition);
            EXPECT_TRUE(repeated == promise.whole || (!promise.again.empty() && std::regex_match(repeated, again)))
                << fault << ", then " << repeated;
        }
    }
    printf("[  WALKED  ] %d calls, %d faults: %s\n", calls, faults, name);
}
