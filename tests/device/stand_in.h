// tests/device/stand_in.h - functions of the system as rows of tables. A stand-in takes the bed and, in their order,
// what the guest's arguments are: words, a text that a word points to (std::u16string, std::string), the object behind
// a handle (`Socket&`: anything else is a fault; `Socket*`: it may be missing), or all Arguments.
#pragma once

#include "tests/device/bed.h"

#include <type_traits>
#include <utility>

template <class Value>
decltype(auto) TakeArgument(const Arguments& arguments, size_t index) {
    using Plain = std::remove_cvref_t<Value>;
    if constexpr (std::is_same_v<Plain, Arguments>) {
        return (arguments);
    } else if constexpr (std::is_same_v<Plain, std::u16string>) {
        return ReadText(arguments.bed, arguments[index]);
    } else if constexpr (std::is_same_v<Plain, std::string>) {
        return ReadNarrow(arguments.bed, arguments[index]);
    } else if constexpr (std::is_pointer_v<Value>) {
        return FindObject<std::remove_pointer_t<Value>>(arguments.bed, arguments[index]);
    } else if constexpr (std::is_base_of_v<Object, Plain>) {
        return (*FindObject<Plain>(arguments.bed, arguments[index]));
    } else {
        return static_cast<Value>(arguments[index]);
    }
}

template <class Value>
bool IsThere(const Arguments& arguments, size_t index) {
    if constexpr (std::is_reference_v<Value> && std::is_base_of_v<Object, std::remove_cvref_t<Value>>) {
        return FindObject<std::remove_reference_t<Value>>(arguments.bed, arguments[index]) != nullptr;
    }
    return true;
}

// The guest finds the result in r0; 1 where there is none, and 0 after a foreign handle.
template <class Result, class... Values>
StandIn TakeArguments(Result (*function)(Bed&, Values...)) {
    return [function](const Arguments& arguments) {
        const auto call = [&]<size_t... I>(std::index_sequence<I...>)->uint32_t {
            if (!(IsThere<Values>(arguments, I) && ...)) {
                AddFault(arguments.bed, arguments.function + " is given what is gone or of another kind");
                return 0;
            }
            if constexpr (std::is_void_v<Result>) {
                function(arguments.bed, TakeArgument<Values>(arguments, I)...);
                return 1;
            } else {
                return static_cast<uint32_t>(function(arguments.bed, TakeArgument<Values>(arguments, I)...));
            }
        };
        return call(std::index_sequence_for<Values...>{});
    };
}

struct StandInRow {
    const char* name;  // as in platform/device/imports.txt
    StandIn call;

    template <class Function>
    StandInRow(const char* of, Function function) : name(of), call(TakeArguments(+function)) {}
};
using StandInTable = std::vector<StandInRow>;

StandInTable KernelStandIns();    // memory, time, modules, threads
StandInTable FileStandIns();      // files in a host folder
StandInTable TextStandIns();      // wcs... and conversion between wide and narrow
StandInTable RegistryStandIns();  // in memory
StandInTable NetworkStandIns();   // adapters, counters, ARP, echo, the wireless driver
StandInTable SocketStandIns();    // Winsock, connection manager, internet library
StandInTable WindowStandIns();    // windows, messages, timers
StandInTable DialogStandIns();    // dialogs, property sheet, shell
StandInTable GdiStandIns();       // recorded

// Does nothing, successfully as most functions see it.
inline void Ignore(Bed&) {}
