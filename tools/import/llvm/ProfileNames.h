// SPDX-License-Identifier: MIT
//
// The names of a binary's or a profile's functions by their hashes. Layout, repeated until the end:
// a text (LlvmText.h) of names with a byte 0x01 between them, then any number of zero bytes.
#pragma once

#include "tools/import/llvm/LlvmText.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ProfileNames
{
public:
    ProfileNames() = default;
    ProfileNames(const ProfileNames&) = delete;
    ProfileNames& operator=(const ProfileNames&) = delete;

    // Adds all names of `bytes`. Returns false when they are damaged.
    bool add(const std::string& bytes);

    // Adds one name. Returns its hash.
    uint64_t addName(const std::string& name);

    // Gives back the memory; no name is there afterwards.
    void forget();

    bool isEmpty() const { return _names.empty() && _added.empty(); }

    // The name with this hash; empty when there is none. Valid for the object's life.
    std::string_view find(uint64_t hash) const;

private:
    LlvmText _reader;
    std::deque<std::string> _texts;
    std::vector<std::pair<uint64_t, std::string_view>> _names; // in _texts, sorted by hash
    std::map<uint64_t, std::string> _added;
};
