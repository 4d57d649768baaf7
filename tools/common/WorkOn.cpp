// SPDX-License-Identifier: MIT
#include "tools/common/WorkOn.h"

#include <atomic>
#include <cstdio>
#include <exception>

namespace {

// No memory is to be had when these words are kept.
char words[4096 + 256];
std::atomic_flag isKept = ATOMIC_FLAG_INIT;

} // namespace

WorkOn::WorkOn(const char* what, const std::string& thing)
    : _what(what), _thing(thing), _exceptions(std::uncaught_exceptions())
{}

WorkOn::~WorkOn()
{
    if (std::uncaught_exceptions() > _exceptions && !isKept.test_and_set()) {
        std::snprintf(words, sizeof words, "%s%s", _what, _thing.c_str());
    }
}

const char* WorkOn::interrupted()
{
    return words;
}
