// SPDX-License-Identifier: MIT
#include "tools/import/llvm/ProfileNames.h"

#include "tools/import/llvm/md5Low.h"

#include <algorithm>

namespace {

// Names of functions resemble each other; packed they may need a fiftieth. What is allowed beyond
// that bounds the memory that a few bytes can ask for.
constexpr uint64_t FirstBytes = 16u << 20;
constexpr uint64_t BytesForEach = 64;

} // namespace

bool ProfileNames::add(const std::string& bytes)
{
    LlvmBytes chunks(bytes);
    _reader.allow((_texts.empty() ? FirstBytes : 0) + BytesForEach * bytes.size());
    chunks.skipZeros();
    while (chunks.left() > 0) {
        _texts.emplace_back();
        std::string& text = _texts.back();
        if (!_reader.read(chunks, text)) {
            return false;
        }
        for (size_t start = 0; start < text.size();) {
            const size_t end = std::min(text.find('\x01', start), text.size());
            const std::string_view name(text.data() + start, end - start);
            if (!name.empty()) {
                _names.emplace_back(md5Low(name.data(), name.size()), name);
            }
            start = end + 1;
        }
        chunks.skipZeros();
    }
    std::sort(_names.begin(), _names.end());
    return true;
}

uint64_t ProfileNames::addName(const std::string& name)
{
    const uint64_t hash = md5Low(name.data(), name.size());
    _added.emplace(hash, name);
    return hash;
}

void ProfileNames::forget()
{
    std::vector<std::pair<uint64_t, std::string_view>>().swap(_names);
    _texts.clear();
    _added.clear();
}

std::string_view ProfileNames::find(uint64_t hash) const
{
    const auto found =
        std::lower_bound(_names.begin(), _names.end(), std::make_pair(hash, std::string_view()));
    if (found != _names.end() && found->first == hash) {
        return found->second;
    }
    const auto added = _added.find(hash);
    return added == _added.end() ? std::string_view() : added->second;
}
