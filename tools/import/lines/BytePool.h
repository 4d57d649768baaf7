// SPDX-License-Identifier: MIT
//
// Keeps many small pieces of text or data with no cost of their own, until it goes.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

class BytePool
{
public:
    // Copies `size` bytes. The copy stays where it is for the pool's life.
    const char* keep(const char* bytes, size_t size);

private:
    std::vector<std::unique_ptr<char[]>> _chunks;
    char* _free = nullptr;
    size_t _left = 0; // bytes at _free
};
