// SPDX-License-Identifier: MIT
//
// Reads a C++ symbol in the encoding of the Itanium ABI without making text of it: how long its
// text would be, and where its name ends. A symbol may refer to its own parts again and again, so
// 300 characters can stand for gigabytes; the C++ library's decoder has no limit of its own and
// must only be called for what this has measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct SymbolScan
{
    bool _isKnown = false;   // every part was understood; otherwise only _length is of use
    bool _hasResult = false; // the text starts with a result type
    size_t _nameEnd = 0;     // what follows the name in the symbol: parameters, or its end
    uint64_t _length = 0;    // of the text, in characters: at most this, or little more
    uint64_t _steps = 0;     // parts read, each repetition counted
    // Where "Dp" stands in the parameters of lambdas: some versions of the decoder do not know it.
    std::vector<size_t> _lambdaPacks;
};

// The result is linear in the symbol's length, in time and memory. `_length` of a symbol that is
// not understood supposes that each reference doubles the text.
SymbolScan scanSymbol(const std::string& symbol);
