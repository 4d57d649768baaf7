// SPDX-License-Identifier: MIT
#include "tools/run/TextReplacer.h"

#include "qip/Support/qipAssert.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

TextReplacer::TextReplacer(std::string from, std::string to)
    : _from(std::move(from)), _to(std::move(to))
{
    qipAssert(!_from.empty());
}

std::string TextReplacer::next(const char* bytes, size_t size)
{
    _kept.append(bytes, size);
    std::string result;
    size_t start = 0;
    for (size_t at = 0; (at = _kept.find(_from, start)) != std::string::npos;) {
        result.append(_kept, start, at - start).append(_to);
        start = at + _from.size();
    }
    size_t length = std::min(_kept.size() - start, _from.size() - 1);
    while (length > 0 && _kept.compare(_kept.size() - length, length, _from, 0, length) != 0) {
        --length;
    }
    result.append(_kept, start, _kept.size() - length - start);
    _kept.erase(0, _kept.size() - length);
    return result;
}

std::string TextReplacer::end()
{
    return std::exchange(_kept, {});
}

void replaceInFile(const std::string& path, const std::string& from, const std::string& to)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) {
        return; // a pipe or a terminal
    }
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    file.close();
    if (text.find(from) != std::string::npos) {
        TextReplacer replacer(from, to);
        std::ofstream(path, std::ios::binary)
            << replacer.next(text.data(), text.size()) << replacer.end();
    }
}
