#pragma once

// For programs that stand on a machine of their own: they derive a host from host::Host, and its ports from
// the classes below. What the library may ask of each is said there. LinuxHost is such a host.

#include "host/clock.h"
#include "host/credential_vault.h"
#include "host/desktop.h"
#include "host/host.h"
#include "host/message_loop.h"
#include "host/operating_system.h"
#include "host/registry.h"
#include "host/wininet_api.h"
#include "host/winsock_library.h"
