// The walk itself. What it walked is in the test's output: "[  WALKED  ] 12 calls, 24 faults".
#include "tests/unit/native/fault_walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

namespace {

// Descriptors of the system and what the fakes handed out.
std::ptrdiff_t OpenResources() {
    return fakes::OpenResources() + std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

bool IsOneOf(const std::vector<std::string>& outcomes, const std::string& outcome) {
    return std::find(outcomes.begin(), outcomes.end(), outcome) != outcomes.end();
}

// Its outcome; `calls` are those until the faults ended.
std::string Run(const Operation& operation, int& calls) {
    const std::string answer = operation.run();
    calls = fakes::EndFaults();
    const std::string left = operation.look != nullptr ? operation.look() : "";
    return answer + (answer.empty() || left.empty() ? "" : " | ") + left;
}

}  // namespace

void WalkFaults(const char* name, const Operation& operation, const std::string& whole,
                const std::vector<std::string>& degraded, const std::vector<std::string>& again) {
    SCOPED_TRACE(name);
    std::vector<std::string> seen;
    int calls = 0;
    for (const fakes::Faults lasting : {fakes::Faults::Once, fakes::Faults::FromThereOn}) {
        for (int nth = 1;; ++nth) {
            ResetForTest();
            operation.prepare();
            const std::ptrdiff_t resources = OpenResources();
            fakes::FailCall(nth, lasting);
            const std::string outcome = Run(operation, calls);
            const std::string fault = fakes::FailedCall() + ", call " + std::to_string(nth) +
                                      (lasting == fakes::Faults::Once ? ", gives " : " and on, gives ") + outcome;
            EXPECT_EQ(OpenResources(), resources) << fault;
            if (calls < nth) {
                EXPECT_EQ(outcome, whole);
                break;
            }
            EXPECT_TRUE(outcome == whole || IsOneOf(degraded, outcome)) << fault;
            seen.push_back(outcome);
            int callsOfRepetition = 0;
            const std::string repeated = Run(operation, callsOfRepetition);
            EXPECT_TRUE(again.empty() ? repeated == whole : IsOneOf(again, repeated)) << fault << ", then " << repeated;
        }
    }
    for (const std::string& outcome : degraded) {
        EXPECT_TRUE(IsOneOf(seen, outcome)) << "no fault gives " << outcome;
    }
    printf("[  WALKED  ] %d calls, %zu faults: %s\n", calls, seen.size(), name);
}

std::string YesOrNo(bool yes) {
    return yes ? "yes" : "no";
}
