// tests/device/player.h - performs scripts of what a person, the host and the network do to the item: as ARM code in
// the model of the handheld, and with the desktop's objects under Wine. Every call that shows, opens or saves something
// is a line of the trace, in a form that both share.
#pragma once

#include "tests/fakes/scripted_platform.h"

#include <concepts>
#include <deque>
#include <filesystem>
#include <utility>

// Functions of the system as the script and the model of the handheld answer them. Every argument is a word; what one
// points to is memory of this process on both systems.
inline constexpr size_t kMostArguments = 12;

// Takes that many words, of which a function looks at as many as it has arguments.
using StandIn = std::function<uint64_t(const uint64_t* words)>;

// A pointer of this process as a word, and back: on a 32-bit system a handle stands for what has no place there.
uint64_t WordOf(const void* pointer);
void* PointerOf(uint64_t word);
template <std::integral Value>
uint64_t WordOf(Value value) {
    return static_cast<uint64_t>(value);
}

// A word as a function of this process takes it: a number, a pointer, or a text of wider letters.
struct Word {
    uint64_t word;
    std::wstring text = {};

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
        text.assign(letters, letters + std::char_traits<char16_t>::length(letters));
        return text.c_str();
    }
};

template <class Result, class... Values>
StandIn TakeWords(Result (*function)(Values...)) {
    return [function](const uint64_t* words) {
        return [&]<size_t... I>(std::index_sequence<I...>) {
            return WordOf(function(static_cast<Values>(Word{words[I]})...));
        }
        (std::index_sequence_for<Values...>{});
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

// The steps go to the topmost window: the item, or the dialog (page) opened last. A step that opens a dialog makes the
// following ones that dialog's, until one of them ends it.
using Step = std::function<void()>;
using Script = std::vector<Step>;
// The whole script has these one after the other, each from where the one before it ended.
extern const Script kBegin, kTraffic, kTools, kDetector, kOptions, kEnd, kHighResolution;
extern const Step kPaint;
// The adapter counts so much more before each of the ticks.
Step Tick(uint32_t received, uint32_t transmitted, int times = 1);

// TODAYLISTITEM, which is alike on both systems as far as it is used.
inline constexpr size_t kRecordEnabled = 76, kRecordBytes = 720;

struct Player {
    std::string trace;                  // the lines so far
    std::deque<std::string> reference;  // lines of the other system that the next ones have to equal
    std::string difference;             // the first
    std::filesystem::path root;         // of the files
    const Script* script = nullptr;
    size_t next = 0;  // step
    SYSTEMTIME time = {};
    uint32_t tickCount = 1000000, screenWidth = 0, screenHeight = 0;
    uint8_t* memory = nullptr;  // that the item can reach: the Today screen's record, behind it what messages point to
    uint64_t item = 0;
    uint64_t top = 0;    // where steps go
    uint64_t ended = 1;  // the dialog that asked to end; 1: none
};
extern Player player;

void ResetPlayer();  // with the script's network
void Perform(const Script& script);
void PerformWholeScript();
// For the system's stand-ins of dialogs and pages: performs steps until it ends, or until the last one.
void RunDialog(uint64_t window);
StandInTable ScriptedStandIns();  // what of the system the script answers by itself, alike on both

void Add(const std::string& line);
void AddFiles();
// Makes a call and writes it down, if it is of those that are compared.
uint64_t TraceCall(const std::string& function, const uint64_t* words, const StandIn& perform);
extern const std::map<std::string, const char*> kTracedFunctions;
std::string Narrow(const char16_t* text);  // what lies beyond ASCII is "?"

// The system.
extern const size_t kPointerBytes;
uint64_t AttachItem();  // loads the library; gives the item window
void DetachItem();
void OpenOptions();  // returns when they are closed
int64_t SendTo(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam);
// Only a desktop has controls. What they answered there is in the trace, by which the handheld's answer.
void SendToControl(uint32_t number, uint32_t message, uint64_t wParam, const void* lParam);
int NumberOf(uint64_t window);  // of a control; 0: another window
