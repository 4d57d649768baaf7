// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccTree.h"

#include "tools/common/SourcePath.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace {

const char notesEnd[] = ".gcno";
const char countersEnd[] = ".gcda";
constexpr size_t EndLength = 5;

bool endsWith(const std::string& path, const char* end)
{
    return path.size() > EndLength && path.compare(path.size() - EndLength, EndLength, end) == 0;
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

bool GccTree::findFiles(const std::string& folder, std::vector<std::string>& notes,
                        std::vector<std::string>& counters)
{
    FolderWalk walk(folder);
    while (walk.next()) {
        if (endsWith(walk.path(), notesEnd) && walk.isFile()) {
            notes.push_back(walk.path());
        } else if (endsWith(walk.path(), countersEnd) && walk.isFile()) {
            counters.push_back(walk.path());
        }
    }
    return _problems.add(walk, folder);
}

bool GccTree::addBuild(const char* folder)
{
    const std::string real = realFolder(folder);
    const bool isRead = findFiles(real, _notes, _counters);
    sortOnce(_notes);
    sortOnce(_counters);
    _buildFolders.push_back(real + "/");
    return isRead;
}

bool GccTree::addRun(const char* folder)
{
    const std::string real = realFolder(folder);
    std::vector<std::string> notes; // those in a run's folder are none of the build's
    std::vector<std::string> counters;
    bool isRead = findFiles(real, notes, counters);
    if (isRead && counters.empty()) {
        _problems.add("no .gcda file in the run folder " + real +
                      ": did the program run with GCOV_PREFIX set to it, and did it exit?");
        isRead = false;
    }
    _runCounters.insert(_runCounters.end(), counters.begin(), counters.end());
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

std::vector<std::string> GccTree::strayCounters() const
{
    std::vector<std::string> used;
    for (const std::string& notes : _notes) {
        used.push_back(countersOf(notes));
    }
    sortOnce(used);
    const std::vector<std::string>& all = _runFolders.empty() ? _counters : _runCounters;
    std::vector<std::string> result;
    std::copy_if(all.begin(), all.end(), std::back_inserter(result),
                 [&used](const std::string& path) { return !contains(used, path); });
    return result;
}

// The run of a program leaves the counters of all its parts; those that were not built below the
// build folders are none of the import's.
bool GccTree::isOfBuild(const std::string& counters) const
{
    std::string path = counters;
    for (const std::string& folder : _runFolders) {
        if (counters.compare(0, folder.size(), folder) == 0) {
            path = counters.substr(folder.size() - 1);
        }
    }
    return std::any_of(
        _buildFolders.begin(), _buildFolders.end(),
        [&path](const std::string& folder) { return path.compare(0, folder.size(), folder) == 0; });
}

uint64_t GccTree::findLostUnits()
{
    uint64_t result = 0;
    for (const std::string& counters : strayCounters()) {
        if (isOfBuild(counters)) {
            _problems.add(counters + ": the .gcno file of these counters is gone: compile " +
                          "the unit again, or delete them");
            ++result;
        }
    }
    return result;
}

bool GccTree::isAnyUnitRun() const
{
    return std::any_of(_notes.begin(), _notes.end(),
                       [this](const std::string& notes) { return !countersOf(notes).empty(); });
}
