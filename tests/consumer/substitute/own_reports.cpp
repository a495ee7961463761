#include <cstdio>

#include "platform/utility.h"

void error_mess_fl(const char* message, const char* module, int) {
    std::printf("own platform: %s: %s\n", module, message);
}

void report_warning(int, const char*) {}
