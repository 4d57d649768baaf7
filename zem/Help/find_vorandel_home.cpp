// SPDX-License-Identifier: MIT
#include "zem/Help/find_vorandel_home.h"

#include "zem/Help/programShare.h"

#include <cstdlib>

bool find_vorandel_home(const char* application, std::string& home)
{
    if (const char* named = getenv("VORANDEL")) {
        home = named;
        return true;
    }
    const std::string share = programShare((std::string(application) + "/help").c_str());
    if (share.empty()) {
        return false;
    }
    home = share;
    return true;
}
