// ws2tcpip.h of the native build: what it adds to Winsock, the real system's headers have brought already.
#pragma once

#include "winsock2.h"
