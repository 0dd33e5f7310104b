// tests/support/texts.h - several texts as one, for a row of a table.
#pragma once

#include <initializer_list>
#include <sstream>
#include <string>

// What a function answers to each of the arguments: "1|2|3".
template <class Function, class Argument>
std::wstring Each(Function function, std::initializer_list<Argument> arguments) {
    std::wostringstream answers;
    for (const Argument& argument : arguments) {
        answers << (&argument == arguments.begin() ? L"" : L"|") << function(argument);
    }
    return answers.str();
}

inline std::wstring Joined(std::initializer_list<std::wstring> texts) {
    return Each([](const std::wstring& text) { return text; }, texts);
}
