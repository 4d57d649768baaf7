// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccTree.h"

#include "tools/common/SourcePath.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace {

const char notesEnd[] = ".gcno";
const char countersEnd[] = ".gcda";
constexpr size_t EndLength = 5;

bool endsWith(const std::string& path, const char* end)
{
    return path.size() > EndLength && path.compare(path.size() - EndLength, EndLength, end) == 0;
}

// A folder below that cannot be read is passed by. Returns false when `folder` itself cannot.
bool findFiles(const std::string& folder, std::vector<std::string>& notes,
               std::vector<std::string>& counters)
{
    namespace fs = std::filesystem;
    std::error_code failure;
    fs::recursive_directory_iterator walk(folder, fs::directory_options::skip_permission_denied,
                                          failure);
    if (failure || access(folder.c_str(), R_OK | X_OK) != 0) {
        return false;
    }
    for (; walk != fs::recursive_directory_iterator(); walk.increment(failure)) {
        if (failure) {
            break;
        }
        const std::string path = walk->path().string();
        std::error_code ignored;
        if (endsWith(path, notesEnd) && walk->is_regular_file(ignored)) {
            notes.push_back(path);
        } else if (endsWith(path, countersEnd) && walk->is_regular_file(ignored)) {
            counters.push_back(path);
        }
    }
    return true;
}

void sortOnce(std::vector<std::string>& paths)
{
    std::sort(paths.begin(), paths.end());
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
}

bool contains(const std::vector<std::string>& sorted, const std::string& path)
{
    return std::binary_search(sorted.begin(), sorted.end(), path);
}

// Two spellings of one folder must give one unit.
std::string realFolder(const char* folder)
{
    std::error_code failure;
    const std::filesystem::path real = std::filesystem::canonical(folder, failure);
    return failure ? absolutePath("", folder) : real.string();
}

} // namespace

bool GccTree::addBuild(const char* folder)
{
    const bool isRead = findFiles(realFolder(folder), _notes, _counters);
    sortOnce(_notes);
    sortOnce(_counters);
    return isRead;
}

bool GccTree::addRun(const char* folder)
{
    const std::string real = realFolder(folder);
    std::vector<std::string> notes; // those in a run's folder are none of the build's
    const bool isRead = findFiles(real, notes, _runCounters);
    sortOnce(_runCounters);
    _runFolders.push_back(real + "/");
    return isRead;
}

std::string GccTree::countersOf(const std::string& notes) const
{
    const std::string path = notes.substr(0, notes.size() - EndLength) + countersEnd;
    if (_runFolders.empty()) {
        return contains(_counters, path) ? path : std::string();
    }
    for (const std::string& folder : _runFolders) {
        // The whole path first, then one leading folder less each time.
        for (size_t slash = path.find('/'); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            std::string candidate = folder + path.substr(slash + 1);
            if (contains(_runCounters, candidate)) {
                return candidate;
            }
        }
    }
    return std::string();
}

std::vector<GccUnitFiles> GccTree::units() const
{
    std::vector<GccUnitFiles> result;
    result.reserve(_notes.size());
    for (const std::string& notes : _notes) {
        result.push_back({notes, countersOf(notes)});
    }
    return result;
}

uint64_t GccTree::strayCounters() const
{
    std::vector<std::string> used;
    for (const std::string& notes : _notes) {
        used.push_back(countersOf(notes));
    }
    sortOnce(used);
    const std::vector<std::string>& all = _runFolders.empty() ? _counters : _runCounters;
    return static_cast<uint64_t>(
        std::count_if(all.begin(), all.end(),
                      [&used](const std::string& path) { return !contains(used, path); }));
}
