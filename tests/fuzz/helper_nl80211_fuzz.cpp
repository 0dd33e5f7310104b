// Foreign bytes as the kernel's wireless answers, turned into NDIS values.

#include <cstdlib>

#include "platform/linux/ndis_records.h"

using namespace helper;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    WirelessInterface interface;
    Station station;
    AccessPoint accessPoint;
    ParseInterface(bytes, interface);
    ParseStation(bytes, station);
    if (ParseAccessPoint(bytes, accessPoint)) {
        WepStatus(accessPoint);
        AuthenticationMode(accessPoint.security);
        const NdisValue list = BssidListValue(std::span(&accessPoint, 1), 1008);
        if (list.size() != sizeof(uint32_t) + kBssidEntryBytes || accessPoint.ssid.size() > kMaxSsidBytes) {
            abort();
        }
    }
    return 0;
}
