// The adapter that counts here is the first of type Ethernet, whichever one is monitored.

#include "diagnostics/own_address.h"

#include "adapters/adapter_list.h"
#include "platform/format_text.h"

void GetCurrentAdapterAddress(char (&ipText)[kAddressTextBytes], MacAddress& mac) {
    ipText[0] = 0;
    mac = {};
    AdapterList list;
    const IP_ADAPTER_INFO* adapter = ReadFirstEthernetAdapter(list);
    if (adapter == nullptr) {
        return;
    }
    if (adapter->CurrentIpAddress != nullptr) {
        FormatText(ipText, "%s", adapter->CurrentIpAddress->IpAddress.String);
    }
    if (adapter->AddressLength > 0) {
        memcpy(mac.bytes, adapter->Address, sizeof(mac.bytes));
    }
}
