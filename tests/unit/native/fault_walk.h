// tests/unit/native/fault_walk.h - every faked call of an operation fails: alone, with all that follow it, with those
// of its function. Whatever fails, nothing stays open and nothing is lost.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

using Values = std::vector<std::wstring>;
using Others = std::set<std::wstring>;
using Contents = std::map<std::wstring, std::wstring>;  // by name; what is not there counts as empty

// What an operation tells, one value after the other.
struct Told {
    Values values;
    template <typename... All>
    explicit Told(const All&... all) : values{(std::wostringstream() << all).str()...} {}
};

// Files and settings. A list whose second file alone is there is not lost: whoever opens it takes that.
inline Contents LookAround() {
    Contents found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(fakes::Root())) {
        if (entry.is_regular_file()) {
            std::ifstream file(entry.path(), std::ios::binary);
            found[entry.path().filename().wstring()].assign(std::istreambuf_iterator(file), {});
        }
    }
    for (const auto& [second, list] : {std::pair(L"tmphosts.dat", L"hosts.dat"), {L"tmpslist", L"slist.dat"}}) {
        if (const auto taken = found.extract(second)) {
            found.emplace(list, taken.mapped());
        }
    }
    for (const auto& [path, key] : fakes::keys) {
        for (const auto& [name, value] : key.values) {
            found[name].assign(value.second.begin(), value.second.end());
        }
    }
    return found;
}

// What the operation left, what the user was told, and what it tells by places.
inline Contents OutcomeOf(Told (*run)(), const fakes::Countdown& faults) {
    fakes::shownMessages.clear();
    fakes::countdown = faults;
    const Told told = run();
    Contents outcome = LookAround();
    outcome[L"message"] = fakes::shownMessages.empty() ? L"" : fakes::shownMessages.back().text;
    for (size_t i = 0; i < told.values.size(); ++i) {
        outcome[L"value " + std::to_wstring(i)] = told.values[i];
    }
    return outcome;
}

// What of an outcome is neither as `before` nor as `complete` nor one of `others`. A table for other programs may be a
// part of the complete one.
inline std::wstring Broken(Contents outcome, Contents before, Contents complete, const Others& others) {
    std::wstring broken;
    Contents all = outcome;
    all.insert(complete.begin(), complete.end());
    for (const auto& [name, any] : all) {
        const std::wstring is = outcome[name];
        const bool isBegun = before[name].empty() && name.ends_with(L".csv");
        const bool isFine = is == before[name] || is == complete[name] || others.contains(is) || isBegun;
        broken += isFine ? L"" : name + L" is " + is + L"; ";
    }
    return broken;
}

// Runs the operation, which tells the `whole` values, with a fault in each of its calls. Each value, file and setting
// is then as before, as without a fault, or one of `others`; and a repetition without faults changes what is left to
// change.
inline void WalkFaults(void (*prepare)(), const Values& whole, const Others& others, Told (*run)()) {
    const auto prepared = [&] {
        ResetForTest();
        prepare();
        return LookAround();
    };
    prepared();
    EXPECT_EQ(run().values, whole);
    prepared();
    const Contents complete = OutcomeOf(run, {});
    const int calls = fakes::countdown.calls;
    for (const auto faults : {fakes::Faults::Once, fakes::Faults::FromThereOn, fakes::Faults::OfItsFunction}) {
        for (int nth = 1; nth <= calls; ++nth) {
            const Contents before = prepared();
            const int resources = fakes::OpenResources();
            const Contents outcome = OutcomeOf(run, {nth, faults, 0, {}});
            SCOPED_TRACE(std::string(fakes::countdown.failed) + ", call " + std::to_string(nth));
            EXPECT_EQ(fakes::OpenResources(), resources);
            EXPECT_EQ(Broken(outcome, before, complete, others), L"");
            if (outcome != complete) {
                const bool isUnchanged = LookAround() == before;
                const Contents again = OutcomeOf(run, {});
                EXPECT_EQ(Broken(again, complete, complete, isUnchanged ? Others() : others), L"") << "again";
            }
        }
    }
}
