// SPDX-License-Identifier: MIT
#include "tools/run/CounterKinds.h"

#include "tools/common/FolderWalk.h"

namespace {

bool endsIn(const std::string& path, const std::string& end)
{
    return path.size() > end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

} // namespace

CounterKinds CounterKinds::in(const std::string& folder)
{
    CounterKinds kinds;
    FolderWalk walk(folder);
    while (!kinds.both() && walk.next()) {
        kinds._hasGcc = kinds._hasGcc || endsIn(walk.path(), ".gcda");
        kinds._hasLlvm = kinds._hasLlvm || endsIn(walk.path(), ".profraw");
    }
    return kinds;
}

bool holdsFile(const std::string& folder, const std::string& end)
{
    FolderWalk walk(folder);
    while (walk.next()) {
        if (endsIn(walk.path(), end)) {
            return true;
        }
    }
    return false;
}
