// SPDX-License-Identifier: MIT
#include "zem/Share/find_vorandel_home.h"

#include "zem/Share/programShare.h"

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
