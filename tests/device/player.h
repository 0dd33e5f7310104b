// tests/device/player.h - performs scripts of what a person, the host and the network do to the item: as ARM code in
// the model of the handheld, and with the desktop's objects under Wine. Every call that shows, opens or saves something
// is a line of the trace, in a form that both share.
#pragma once

#include "tests/device/stand_in.h"
#include "tests/fakes/scripted_platform.h"

#include <array>
#include <deque>
#include <map>

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
inline constexpr size_t kRecordHeight = 72, kRecordEnabled = 76, kRecordBytes = 720;

struct Player {
    std::string trace;                      // the lines so far
    std::deque<std::string> reference;      // lines of the other system that the next ones have to equal
    std::string difference;                 // the first
    std::map<uint64_t, std::string> names;  // of drawing objects: what they were made from
    const Script* script = nullptr;
    size_t next = 0;  // step
    SYSTEMTIME time = {};
    uint32_t tickCount = 1000000, screenWidth = 0, screenHeight = 0;
    uint8_t* memory = nullptr;  // that the item can reach: the Today screen's record, behind it what messages point to
    uint64_t item = 0;
    uint64_t top = 0;                            // where steps go
    uint32_t answer = 1;                         // to the next message box
    uint64_t ended = 0;                          // the dialog that asked to end
    std::deque<std::array<uint64_t, 3>> posted;  // windows, messages, first arguments
};
extern Player player;

void ResetPlayer();  // with the script's network
void Perform(const Script& script);
void PerformWholeScript();
// For the system's stand-ins of dialogs and pages: performs steps until it ends, and closes it.
void RunDialog(uint64_t window);
StandInTable ScriptedStandIns();  // what of the system the script answers by itself, alike on both

void Add(const std::string& line);
// Makes a call and writes it down, if it is of those that are compared.
uint64_t TraceCall(const std::string& function, const uint64_t* words, const StandIn& perform);
std::vector<std::string> TracedFunctions();
std::string Narrow(const char16_t* text);  // what lies beyond ASCII is "?"

// The system.
extern const size_t kPointerBytes;
uint64_t AttachItem();  // loads the library; gives the item window
void DetachItem();
void OpenOptions();  // returns when they are closed
void CloseWindow(uint64_t window);
int64_t SendTo(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam);
// Only a desktop has controls. What they answered there is in the trace, by which the handheld's answer.
void SendToControl(uint32_t number, uint32_t message, uint64_t wParam, const void* lParam);
int NumberOf(uint64_t window);  // of a control; 0: another window
