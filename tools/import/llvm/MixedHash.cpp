// SPDX-License-Identifier: MIT
#include "tools/import/llvm/MixedHash.h"

#include <random>

namespace {

uint64_t oddNumber()
{
    std::random_device source;
    return (uint64_t(source()) << 32 | source()) | 1;
}

uint64_t mix(uint64_t number)
{
    static const uint64_t factor = oddNumber();
    const uint64_t product = number * factor;
    return (product ^ product >> 32) * factor;
}

} // namespace

size_t MixedHash::operator()(uint64_t number) const
{
    return static_cast<size_t>(mix(number) >> 16);
}

size_t MixedHash::operator()(const std::pair<uint64_t, uint64_t>& numbers) const
{
    return static_cast<size_t>(mix(mix(numbers.first) + numbers.second) >> 16);
}
