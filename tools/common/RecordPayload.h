// SPDX-License-Identifier: MIT
//
// Collects the payload of one map or log record, big-endian. Used by the writers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class RecordPayload
{
public:
    // The longest text that text() can hold, in bytes: its 16-bit length counts the zero behind it.
    static constexpr size_t LongestText = 65534;

    // Back to no bytes; keeps their memory.
    void clear() { _bytes.clear(); }
    // Makes room for `size` bytes in all.
    void reserve(size_t size) { _bytes.reserve(size); }

    void word16(uint32_t value);
    void word32(uint32_t value);
    void words32(const std::vector<uint32_t>& values);
    // Length and bytes with a terminating zero. REQUIRES: text.size() <= LongestText.
    void text(const std::string& text);

    const char* data() const { return reinterpret_cast<const char*>(_bytes.data()); }
    // In bytes. More than a record can hold shows as a size above 32 bits.
    size_t size() const { return _bytes.size(); }

private:
    std::vector<unsigned char> _bytes;
};
