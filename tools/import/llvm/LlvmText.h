// SPDX-License-Identifier: MIT
//
// Texts of Clang's coverage that may be compressed: LEB128 size, LEB128 compressed size (0: plain),
// then that many bytes of a zlib stream, or the plain text.
#pragma once

#include "tools/import/llvm/LlvmBytes.h"

#include <string>

class LlvmText
{
public:
    // More than this no text may have, and no sum of the texts that one object reads.
    static constexpr uint64_t Largest = 256u << 20;

    // Reads the sizes and the text behind them. Returns false when they do not fit together or are
    // out of all proportion; nothing of `text` is certain then.
    bool read(LlvmBytes& bytes, std::string& text);

private:
    uint64_t _read = 0; // by all calls
};
