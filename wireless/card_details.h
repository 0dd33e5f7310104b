// wireless/card_details.h - the radio settings that the wireless adapter reports.
#pragma once

#include "platform/system.h"

// Texts as they are shown; empty where the adapter did not answer.
struct CardDetails {
    wchar_t beacon[24];
    wchar_t atimWindow[24];
    wchar_t frequency[24];
    wchar_t channel[24];
    const wchar_t* authentication;
    const wchar_t* mode;
    const wchar_t* networkType;
    const wchar_t* wep;
};

// Asks for each setting on its own. False, with every text empty, when there is no wireless adapter.
bool ReadCardDetails(CardDetails& details);
