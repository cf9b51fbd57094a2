#pragma once

#include "XServer.h"

#include <sys/types.h>

/// What a process holds: of the X server's things those of all its connections together.
struct Footprint {
    static Footprint of(pid_t process, const XServer& server);

    int descriptors = 0;
    int threads = 0;
    unsigned serverResources = 0;
    long privateKilobytes = 0; // written to, and not shared with anybody
};
