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
    // So many bytes more may all texts together have, unpacked. None at first.
    void allow(uint64_t bytes) { _left += bytes; }

    // Reads the sizes and the text behind them. Returns false when they do not fit together or are
    // more than is allowed; nothing of `text` is certain then.
    bool read(LlvmBytes& bytes, std::string& text);

private:
    uint64_t _left = 0; // that is allowed
};
