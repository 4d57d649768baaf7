// SPDX-License-Identifier: MIT
#include "tools/import/llvm/ProfileNames.h"

#include "tools/import/llvm/md5Low.h"

#include <algorithm>

bool ProfileNames::add(const std::string& bytes)
{
    LlvmBytes chunks(bytes);
    chunks.skipZeros();
    while (chunks.left() > 0) {
        _texts.emplace_back();
        std::string& text = _texts.back();
        if (!_reader.read(chunks, text)) {
            return false;
        }
        _names.reserve(_names.size() +
                       static_cast<size_t>(std::count(text.begin(), text.end(), '\x01')));
        for (size_t start = 0; start < text.size();) {
            const size_t end = std::min(text.find('\x01', start), text.size());
            const std::string_view name(text.data() + start, end - start);
            _names.emplace(md5Low(name.data(), name.size()), name);
            start = end + 1;
        }
        chunks.skipZeros();
    }
    return true;
}

uint64_t ProfileNames::addName(const std::string& name)
{
    const uint64_t hash = md5Low(name.data(), name.size());
    if (_names.count(hash) == 0) {
        _texts.push_back(name);
        _names.emplace(hash, _texts.back());
    }
    return hash;
}

std::string_view ProfileNames::find(uint64_t hash) const
{
    const auto found = _names.find(hash);
    return found == _names.end() ? std::string_view() : found->second;
}
