// SPDX-License-Identifier: MIT
#include "tools/import/llvm/symbolOf.h"

#include <algorithm>

std::string symbolOf(std::string_view name)
{
    // A method of Objective-C has colons of its own: "-[Class with:and:]".
    const size_t method = std::min(name.find("-["), name.find("+["));
    const size_t prefix = name.substr(0, method).find_last_of(":;");
    name.remove_prefix(prefix == std::string_view::npos ? 0 : prefix + 1);
    return std::string(name.substr(0, name.find(".__uniq.")));
}
