// SPDX-License-Identifier: MIT
#include "zem/Rows/groupLength.h"

#include <cstring>

long directoryLength(const char* path)
{
    const char* slash = std::strrchr(path, '/');
    return slash == nullptr ? -1 : static_cast<long>(slash - path);
}

long classLength(const char* storedName)
{
    const char* colon = std::strrchr(storedName, ':');
    if (colon == nullptr || colon == storedName) {
        return -1;
    }
    const long position = static_cast<long>(colon - storedName);
    if (position == 1) {
        return storedName[0] == ':' ? -1 : 1;
    }
    return position - 1;
}
