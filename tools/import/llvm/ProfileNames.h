// SPDX-License-Identifier: MIT
//
// The names of a binary's or a profile's functions by their hashes. Layout, repeated until the end:
// a text (LlvmText.h) of names with a byte 0x01 between them, then any number of zero bytes.
#pragma once

#include "tools/import/llvm/LlvmText.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

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

    bool isEmpty() const { return _names.empty(); }

    // The name with this hash; empty when there is none. Valid for the object's life.
    std::string_view find(uint64_t hash) const;

private:
    LlvmText _reader;
    std::deque<std::string> _texts;
    std::unordered_map<uint64_t, std::string_view> _names; // in _texts
};
