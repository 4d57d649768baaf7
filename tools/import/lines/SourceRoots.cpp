// SPDX-License-Identifier: MIT
#include "tools/import/lines/SourceRoots.h"

#include "tools/common/SourcePath.h"

#include <algorithm>
#include <sys/stat.h>

namespace {

bool isThere(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

} // namespace

SourceRoots::SourceRoots(const std::string& document)
{
    _around.push_back(absolutePath("", ""));
    std::string folder = absolutePath("", document);
    for (size_t slash = folder.rfind('/'); slash != std::string::npos && slash != 0;
         slash = folder.rfind('/')) {
        folder.resize(slash);
        _around.push_back(folder);
    }
}

bool SourceRoots::add(const std::string& folder)
{
    if (std::find(_folders.begin(), _folders.end(), folder) == _folders.end()) {
        _folders.push_back(folder);
    }
    return _folders.size() <= MostFolders;
}

// Empty when it is not there.
std::string SourceRoots::findBelow(const std::string& folder, const std::string& name) const
{
    for (const std::string& place : _around) {
        std::string candidate = absolutePath(absolutePath(place, folder), name);
        if (isThere(candidate)) {
            return candidate;
        }
        if (folder.compare(0, 1, "/") == 0) {
            break; // the same from everywhere
        }
    }
    return std::string();
}

std::string SourceRoots::search(const std::string& name)
{
    std::string result;
    for (const std::string& folder : _folders) {
        const std::string candidate = findBelow(folder, name);
        if (candidate.empty() || candidate == result) {
            continue;
        }
        if (!result.empty()) {
            std::string message = name;
            message.append(" is ").append(result).append(" or ").append(candidate);
            _ambiguous.push_back(message.append(": the first is taken"));
            break;
        }
        result = candidate;
    }
    if (result.empty()) {
        result = findBelow("", name);
    }
    const std::string folder = _folders.empty() ? "" : _folders.front();
    return !result.empty() ? result : absolutePath(absolutePath("", folder), name);
}

const std::string& SourceRoots::find(const std::string& name)
{
    const auto found = _found.emplace(name, std::string());
    if (found.second) {
        found.first->second = name.compare(0, 1, "/") == 0 ? absolutePath("", name) : search(name);
    }
    return found.first->second;
}
