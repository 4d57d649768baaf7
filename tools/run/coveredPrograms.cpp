// SPDX-License-Identifier: MIT
#include "tools/run/coveredPrograms.h"

#include "tools/common/FolderWalk.h"
#include "tools/import/isBuildProbe.h"
#include "tools/import/llvm/ElfFile.h"

#include <algorithm>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace {

bool isCovered(const std::string& path)
{
    ElfFile file;
    return file.open(path) && !file.isObject() && file.find("__llvm_covmap") != nullptr;
}

} // namespace

std::vector<std::string> coveredPrograms(const std::string& folder)
{
    std::vector<std::string> paths;
    FolderWalk walk(folder);
    while (walk.next()) {
        if (walk.isFile() && !isBuildProbe(walk.path())) {
            paths.push_back(walk.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    std::set<std::pair<dev_t, ino_t>> seen;
    const auto isUnwanted = [&seen](const std::string& path) {
        struct stat status = {};
        return stat(path.c_str(), &status) != 0 || !isCovered(path) ||
               !seen.insert({status.st_dev, status.st_ino}).second;
    };
    paths.erase(std::remove_if(paths.begin(), paths.end(), isUnwanted), paths.end());
    return paths;
}
