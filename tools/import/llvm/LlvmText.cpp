// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmText.h"

#include <zlib.h>

namespace {

// No zlib stream is more than about 1,032 times as large unpacked.
bool isPlausible(uint64_t size, uint64_t packed)
{
    return size <= packed * 1032 + 64;
}

} // namespace

bool LlvmText::read(LlvmBytes& bytes, std::string& text)
{
    const uint64_t size = bytes.leb();
    const uint64_t packed = bytes.leb();
    if (bytes.failed() || size > _left || packed > bytes.left()) {
        return false;
    }
    _left -= size;
    if (packed == 0) {
        const char* plain = bytes.take(size);
        text.assign(plain == nullptr ? "" : plain, plain == nullptr ? 0 : size);
        return plain != nullptr;
    }
    if (!isPlausible(size, packed)) {
        return false;
    }
    const char* stream = bytes.take(packed);
    text.resize(size);
    uLongf got = size;
    return uncompress(reinterpret_cast<Bytef*>(text.data()), &got,
                      reinterpret_cast<const Bytef*>(stream), packed) == Z_OK &&
           got == size;
}
