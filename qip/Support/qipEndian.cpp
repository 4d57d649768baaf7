// SPDX-License-Identifier: MIT
#include "qip/Support/qipEndian.h"

#include "qip/Support/qipVectorised.h"

#include <cstring>

QIP_VECTORISED void qipPutBig32(unsigned char* __restrict bytes, const uint32_t* __restrict words,
                                size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        unsigned char word[sizeof(uint32_t)];
        qipPutBig32(word, words[i]);
        std::memcpy(bytes + sizeof word * i, word, sizeof word);
    }
}

QIP_VECTORISED void qipBigToHost32(uint32_t* words, size_t count)
{
    // Compilers turn the body into one byte swap (nothing on a big-endian host) and vectorise it.
    for (size_t i = 0; i < count; ++i) {
        unsigned char bytes[sizeof(uint32_t)];
        std::memcpy(bytes, &words[i], sizeof bytes);
        words[i] = qipGetBig32(bytes);
    }
}
