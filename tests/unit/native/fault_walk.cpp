// The walk itself. What it walked is in the test's output: "[  WALKED  ] 12 calls, 24 faults".

#include "tests/unit/native/fault_walk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

namespace {

std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

bool IsOneOf(const std::vector<std::string>& outcomes, const std::string& outcome) {
    return std::find(outcomes.begin(), outcomes.end(), outcome) != outcomes.end();
}

struct Walk {
    const Operation& operation;
    std::vector<std::string> seen = {};
    int calls = 0;

    std::string Run() {
        const std::string answer = operation.run();
        calls = fakes::EndFaults();
        const std::string left = operation.look != nullptr ? operation.look() : "";
        return answer + (answer.empty() || left.empty() ? "" : " | ") + left;
    }

    std::string RunWithFault(int nth, fakes::Faults lasting) {
        ResetForTest();
        operation.prepare();
        const std::ptrdiff_t descriptors = OpenDescriptors();
        const int resources = fakes::OpenResources();
        fakes::FailCall(nth, lasting);
        const std::string outcome = Run();
        EXPECT_EQ(fakes::OpenResources(), resources) << fakes::FailedCall() << nth;
        EXPECT_EQ(OpenDescriptors(), descriptors) << fakes::FailedCall() << nth;
        return outcome;
    }
};

}  // namespace

void WalkFaults(const char* name, const Operation& operation, const std::string& whole,
                const std::vector<std::string>& degraded, const std::vector<std::string>& again) {
    SCOPED_TRACE(name);
    Walk walk = {operation};
    for (const fakes::Faults lasting : {fakes::Faults::Once, fakes::Faults::FromThereOn}) {
        for (int nth = 1;; ++nth) {
            const std::string outcome = walk.RunWithFault(nth, lasting);
            if (walk.calls < nth) {
                EXPECT_EQ(outcome, whole);
                break;
            }
            const std::string fault = fakes::FailedCall() + ", call " + std::to_string(nth) +
                                      (lasting == fakes::Faults::Once ? ", gives " : " and on, gives ");
            EXPECT_TRUE(outcome == whole || IsOneOf(degraded, outcome)) << fault << outcome;
            walk.seen.push_back(outcome);
            const std::string repeated = walk.Run();
            EXPECT_TRUE(again.empty() ? repeated == whole : IsOneOf(again, repeated))
                << fault << outcome << " and then " << repeated;
        }
    }
    for (const std::string& outcome : degraded) {
        EXPECT_TRUE(IsOneOf(walk.seen, outcome)) << "no fault gives " << outcome;
    }
    printf("[  WALKED  ] %d calls, %zu faults: %s\n", walk.calls, walk.seen.size(), name);
}

std::string YesOrNo(bool yes) {
    return yes ? "yes" : "no";
}

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}
