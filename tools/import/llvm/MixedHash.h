// SPDX-License-Identifier: MIT
//
// Hashes numbers that stand in a file for unordered containers. The result differs from one run of
// the program to the next, so that nobody can make a file whose numbers all meet in one place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

struct MixedHash
{
    size_t operator()(uint64_t number) const;
    size_t operator()(const std::pair<uint64_t, uint64_t>& numbers) const;
};
