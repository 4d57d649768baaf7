// SPDX-License-Identifier: MIT
//
// The one function of every fuzz target: does something with `size` bytes and returns 0. A crash, a
// sanitizer's report, a leak or a hang is a finding.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
