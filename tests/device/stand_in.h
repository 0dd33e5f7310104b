// tests/device/stand_in.h - functions of the system as the script and the model of the handheld answer them. Every
// argument is a word; what one points to is memory of this process on both systems.
#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

inline constexpr size_t kMostArguments = 12;

// Takes that many words, of which a function looks at as many as it has arguments.
using StandIn = std::function<uint64_t(const uint64_t* words)>;

// A pointer of this process as a word, and back: on a 32-bit system a handle stands for what has no place there.
uint64_t WordOf(const void* pointer);
void* PointerOf(uint64_t word);

// A word as a function of this process takes it: a number, a pointer, or a text of wider letters.
class Word {
  public:
    explicit Word(uint64_t value) : word(value) {}
    template <class Value>
    operator Value*() {
        return reinterpret_cast<Value*>(PointerOf(word));
    }
    template <std::integral Value>
    operator Value() {
        return static_cast<Value>(word);
    }
    operator const wchar_t*() {
        const auto* letters = static_cast<const char16_t*>(*this);
        if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
            return reinterpret_cast<const wchar_t*>(letters);
        }
        text.assign(letters, letters + std::char_traits<char16_t>::length(letters));
        return text.c_str();
    }

  private:
    uint64_t word;
    std::wstring text;
};

// The result is 1 where there is none.
template <class Result, class... Values>
StandIn TakeWords(Result (*function)(Values...)) {
    return [function](const uint64_t* words) -> uint64_t {
        const auto call = [&]<size_t... I>(std::index_sequence<I...>) {
            return function(static_cast<Values>(Word(words[I]))...);
        };
        if constexpr (std::is_void_v<Result>) {
            call(std::index_sequence_for<Values...>{});
            return 1;
        } else if constexpr (std::is_pointer_v<Result>) {
            return WordOf(call(std::index_sequence_for<Values...>{}));
        } else {
            return static_cast<uint64_t>(call(std::index_sequence_for<Values...>{}));
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
