// SPDX-License-Identifier: MIT
#include "tools/import/PathMap.h"

#include "tools/common/SourcePath.h"

#include <algorithm>

namespace {

std::string folder(const std::string& words)
{
    std::string path = absolutePath("", words);
    while (!path.empty() && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

bool isBelow(const std::string& path, const std::string& folder)
{
    return path.compare(0, folder.size(), folder) == 0 &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

const PathMap& PathMap::none()
{
    static const PathMap map;
    return map;
}

bool PathMap::add(const std::string& words)
{
    const size_t equals = words.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == words.size()) {
        return false;
    }
    const Move move = {folder(words.substr(0, equals)), folder(words.substr(equals + 1))};
    const auto same = std::find_if(_moves.begin(), _moves.end(), [&move](const Move& other) {
        return other._from == move._from;
    });
    if (same != _moves.end()) {
        *same = move;
        return true;
    }
    _moves.push_back(move);
    std::sort(_moves.begin(), _moves.end(),
              [](const Move& a, const Move& b) { return a._from.size() > b._from.size(); });
    return true;
}

std::string PathMap::moved(const std::string& path) const
{
    // The longest come first.
    const auto found = std::find_if(_moves.begin(), _moves.end(), [&path](const Move& move) {
        return isBelow(path, move._from);
    });
    return found == _moves.end() ? path : found->_to + path.substr(found->_from.size());
}
