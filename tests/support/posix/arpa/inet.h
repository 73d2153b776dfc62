#pragma once

#include "support/posix/sockets.h"
