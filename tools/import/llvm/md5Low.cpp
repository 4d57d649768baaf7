// SPDX-License-Identifier: MIT
#include "tools/import/llvm/md5Low.h"

#include "tools/import/llvm/LlvmBytes.h"

#include <md5.h>
#include <sys/types.h>

uint64_t md5Low(const char* bytes, size_t size)
{
    MD5_CTX context;
    MD5Init(&context);
    MD5Update(&context, reinterpret_cast<const uint8_t*>(bytes), size);
    uint8_t digest[MD5_DIGEST_LENGTH];
    MD5Final(digest, &context);
    return LlvmBytes(reinterpret_cast<const char*>(digest), sizeof(digest)).u64();
}
