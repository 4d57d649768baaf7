// SPDX-License-Identifier: MIT
#include "tools/run/Environment.h"

#include <algorithm>
#include <unistd.h>

Environment::Environment()
{
    for (char** entry = environ; *entry != nullptr; ++entry) {
        _entries.emplace_back(*entry);
    }
}

const char* Environment::value(const std::string& name) const
{
    const std::string start = name + "=";
    const auto found =
        std::find_if(_entries.begin(), _entries.end(), [&start](const std::string& entry) {
            return entry.compare(0, start.size(), start) == 0;
        });
    return found == _entries.end() ? nullptr : found->c_str() + start.size();
}

void Environment::set(const std::string& name, const std::string& value)
{
    const std::string start = name + "=";
    _entries.erase(std::remove_if(_entries.begin(), _entries.end(),
                                  [&start](const std::string& entry) {
                                      return entry.compare(0, start.size(), start) == 0;
                                  }),
                   _entries.end());
    _entries.push_back(start + value);
}

char** Environment::words()
{
    _words.clear();
    for (std::string& entry : _entries) {
        _words.push_back(entry.data());
    }
    _words.push_back(nullptr);
    return _words.data();
}

void collectInto(const std::string& folder, Environment& environment)
{
    environment.set("GCOV_PREFIX", folder);
    // Any other number would let two units of one name share their counters.
    environment.set("GCOV_PREFIX_STRIP", "0");
    // A process that becomes another program keeps its number, so that %p alone would lose what the
    // first one ran; with %m a program that becomes itself again adds to its counters.
    environment.set("LLVM_PROFILE_FILE", folder + "/%p-%m.profraw");
}
