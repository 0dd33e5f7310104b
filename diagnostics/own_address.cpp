// The adapter that counts here is the first of type Ethernet, whichever one is monitored.

#include "diagnostics/own_address.h"

#include "adapters/adapter_list.h"
#include "platform/adapters.h"
#include "platform/format_text.h"

void GetCurrentAdapterAddress(char (&ipText)[kAddressTextBytes], MacAddress& mac) {
    ipText[0] = 0;
    mac = {};
    DWORD interfaces = 0;
    platform::GetNumberOfInterfaces(&interfaces);
    AdapterList list;
    if (interfaces == 0 || ReadAdapterList(list) != AdapterListResult::Ready) {
        return;
    }
    const IP_ADAPTER_INFO* adapter = FirstEthernetAdapter(list);
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
