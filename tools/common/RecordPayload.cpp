// SPDX-License-Identifier: MIT
#include "tools/common/RecordPayload.h"

#include "qip/Support/qipAssert.h"
#include "qip/Support/qipEndian.h"

void RecordPayload::word16(uint32_t value)
{
    const size_t at = _bytes.size();
    _bytes.resize(at + 2);
    qipPutBig16(&_bytes[at], static_cast<uint16_t>(value));
}

void RecordPayload::word32(uint32_t value)
{
    const size_t at = _bytes.size();
    _bytes.resize(at + 4);
    qipPutBig32(&_bytes[at], value);
}

void RecordPayload::words32(const std::vector<uint32_t>& values)
{
    const size_t at = _bytes.size();
    _bytes.resize(at + 4 * values.size());
    qipPutBig32(_bytes.data() + at, values.data(), values.size());
}

void RecordPayload::text(const std::string& text)
{
    qipAssert(text.size() <= LongestText);
    word16(static_cast<uint32_t>(text.size() + 1));
    _bytes.insert(_bytes.end(), text.begin(), text.end());
    _bytes.push_back(0);
}
