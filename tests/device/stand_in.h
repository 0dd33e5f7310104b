// tests/device/stand_in.h - functions of the system as the script and the model of the handheld answer them. Every
// argument is a word; what one points to is memory of this process on both systems.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

inline constexpr size_t kMostArguments = 12;

// Takes that many words, of which a function looks at as many as it has arguments.
using StandIn = std::function<uint64_t(const uint64_t* words)>;

template <class Value>
Value FromWord(uint64_t word) {
    if constexpr (std::is_pointer_v<Value>) {
        return reinterpret_cast<Value>(static_cast<uintptr_t>(word));
    } else {
        return static_cast<Value>(word);
    }
}

// The result is 1 where there is none.
template <class Result, class... Values>
StandIn TakeWords(Result (*function)(Values...)) {
    return [function](const uint64_t* words) -> uint64_t {
        const auto call = [&]<size_t... I>(std::index_sequence<I...>) {
            return function(FromWord<Values>(words[I])...);
        };
        if constexpr (std::is_void_v<Result>) {
            call(std::index_sequence_for<Values...>{});
            return 1;
        } else {
            return (uint64_t)call(std::index_sequence_for<Values...>{});
        }
    };
}

struct StandInRow {
    const char* name;
    StandIn call;

    template <class Function>
    StandInRow(const char* of, Function function) : name(of), call(TakeWords(+function)) {}
    StandInRow(const char* of, StandIn stands) : name(of), call(std::move(stands)) {}
};
using StandInTable = std::vector<StandInRow>;
