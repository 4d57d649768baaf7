// SPDX-License-Identifier: MIT
#include "tools/import/llvm/md5Low.h"

#include "tools/import/llvm/LlvmBytes.h"

#include <nettle/md5.h>

uint64_t md5Low(const char* bytes, size_t size)
{
    md5_ctx state;
    md5_init(&state);
    md5_update(&state, size, reinterpret_cast<const uint8_t*>(bytes));
    uint8_t digest[MD5_DIGEST_SIZE];
    md5_digest(&state, sizeof(digest), digest);
    return LlvmBytes(reinterpret_cast<const char*>(digest), sizeof(digest)).u64();
}
