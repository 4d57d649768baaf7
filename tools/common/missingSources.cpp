// SPDX-License-Identifier: MIT
#include "tools/common/missingSources.h"

#include "tools/common/SourcePath.h"
#include "tools/common/shellWord.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

// As many files vote for where the sources went; each costs a look for every folder on its path.
constexpr size_t MostVoters = 50;
constexpr size_t MostNames = 3;

// What the sources were below (empty for the root), and where that is now.
using Move = std::pair<std::string, std::string>;

bool isFile(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// The folders given and all above them but the root.
std::set<std::string> placesAround(const std::vector<std::string>& folders)
{
    std::set<std::string> places;
    for (const std::string& folder : folders) {
        std::error_code failure;
        for (fs::path place = fs::weakly_canonical(absolutePath("", folder), failure);
             place.has_relative_path(); place = place.parent_path()) {
            places.insert(place.string());
        }
    }
    return places;
}

// Takes away what both ends have in common.
Move shortened(fs::path from, fs::path to)
{
    while (from.has_relative_path() && to.has_relative_path() && from.filename() == to.filename()) {
        from = from.parent_path();
        to = to.parent_path();
    }
    return {from.has_relative_path() ? from.string() : "", to.string()};
}

// Finds the file below each place by the longest end of its path that is there. The longer it is,
// the less it is there by chance: a vote counts as many times as the end has parts.
void vote(const std::string& path, const std::set<std::string>& places,
          std::map<Move, size_t>& votes)
{
    std::map<Move, size_t> moves;
    for (const std::string& place : places) {
        for (size_t slash = path.find('/'); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            if (isFile(place + path.substr(slash))) {
                const auto parts =
                    std::count(path.begin() + static_cast<std::ptrdiff_t>(slash), path.end(), '/');
                size_t& weight = moves[shortened(path.substr(0, slash), place)];
                weight = std::max(weight, static_cast<size_t>(parts));
                break;
            }
        }
    }
    for (const auto& move : moves) {
        votes[move.first] += move.second;
    }
}

// The option that makes the move; it splits at the first "=".
std::string optionFor(const Move& move)
{
    if (move.first.find('=') != std::string::npos) {
        return "";
    }
    const std::string from = move.first.empty() ? "/" : move.first;
    return " (--map " + shellWord(from + "=" + move.second) + " finds them)";
}

// Whether the file is there after the move.
bool isMoved(const std::string& path, const Move& move)
{
    return path.compare(0, move.first.size() + 1, move.first + "/") == 0 &&
           isFile(move.second + path.substr(move.first.size()));
}

size_t found(const std::vector<std::string>& paths, const Move& move)
{
    return static_cast<size_t>(std::count_if(
        paths.begin(), paths.end(), [&move](const auto& path) { return isMoved(path, move); }));
}

} // namespace

std::string missingSources(const CoverageModel& model, const std::vector<std::string>& folders)
{
    std::vector<std::string> missing;
    for (const CovFile& file : model._files) {
        if (file._timeModified == 0) {
            missing.push_back(file._path);
        }
    }
    if (missing.empty()) {
        return std::string();
    }
    std::vector<std::string> around = folders;
    around.emplace_back(".");
    const std::set<std::string> places = placesAround(around);
    std::map<Move, size_t> votes;
    for (size_t i = 0; i < std::min(missing.size(), MostVoters); ++i) {
        vote(missing[i], places, votes);
    }
    std::string text = std::to_string(missing.size()) + " sources not found:";
    for (size_t i = 0; i < std::min(missing.size(), MostNames); ++i) {
        text += (i == 0 ? " " : ", ") + missing[i];
    }
    text += missing.size() > MostNames ? ", ..." : "";
    const auto best =
        std::max_element(votes.begin(), votes.end(), [](const auto& one, const auto& other) {
            return one.second < other.second;
        });
    if (best == votes.end()) {
        return text + "; zem shows their numbers without their text";
    }
    const Move& move = best->first;
    return text + "; " + std::to_string(found(missing, move)) + " are below " + move.second +
           "/ instead of " + move.first + "/" + optionFor(move);
}
