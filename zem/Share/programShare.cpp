// SPDX-License-Identifier: MIT
#include "zem/Share/programShare.h"

#include <climits>
#include <unistd.h>

std::string programShare(const char* program, const char* entry)
{
    if (program == nullptr || program[0] != '/') {
        return "";
    }
    std::string place(program);
    for (size_t slash = place.rfind('/'); slash != std::string::npos; slash = place.rfind('/')) {
        place.resize(slash);
        std::string share = place + "/share";
        if (access((share + "/" + entry).c_str(), R_OK) == 0) {
            return share;
        }
    }
    return "";
}

std::string programShare(const char* entry)
{
    char program[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    if (length <= 0) {
        return "";
    }
    program[length] = '\0';
    return programShare(program, entry);
}

std::string programDefaults(const char* application)
{
    const std::string entry = std::string("X11/app-defaults/") + application;
    const std::string share = programShare(entry.c_str());
    return share.empty() ? share : share + "/" + entry;
}
