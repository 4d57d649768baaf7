// SPDX-License-Identifier: MIT
//
// How the records of both data files read what they have in common: lengths, words, names and
// arrays, big-endian. Nothing is allocated for a length alone: arrays are taken in bounded pieces,
// so that memory follows what the file really holds.
//
// Each function returns 0, -9 when the stream ends too early, or -7.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory_resource>
#include <vector>

namespace RecordReader {

// Reads `count` (at most 4) words. When the stream ends early, the words that were there are read
// and the other values stay.
[[nodiscard]] int words(FILE* stream, uint32_t* values, int count);

// Reads a 16-bit length N and N bytes of name. `name`, owned by the caller, is replaced by a new
// array of N + 1 bytes that ends in a zero byte whatever the file holds. When the stream ends in
// the length, `name` is null; when it ends in the bytes, `name` is what there was, zero-filled.
[[nodiscard]] int name(FILE* stream, char*& name);

// The same into `memory`, which keeps what `name` pointed at before.
[[nodiscard]] int name(FILE* stream, std::pmr::memory_resource& memory, char*& name);

// Appends `count` words to `array`, in the host's order. When the stream ends early those that
// were there are appended.
[[nodiscard]] int array(FILE* stream, uint32_t count, std::vector<uint32_t>& array);

// Reads `count` words into an array in `memory`, in the host's order, and sets `count` to the
// number that there were. `array` is null when that is 0.
[[nodiscard]] int array(FILE* stream, std::pmr::memory_resource& memory, uint32_t& count,
                        uint32_t*& array);

} // namespace RecordReader
