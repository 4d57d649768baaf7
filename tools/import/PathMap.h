// SPDX-License-Identifier: MIT
//
// Where the folders of a build are now: moves source paths from one folder to another. Filled
// before the work starts, then only asked, from several threads.
#pragma once

#include <string>
#include <vector>

class PathMap
{
public:
    // Moves nothing.
    static const PathMap& none();

    // Takes "OLD=NEW": what lies below the folder OLD is below NEW. Both are made absolute; OLD
    // ends at the first "=". The same OLD again replaces the one before. Returns false when a part
    // is missing.
    bool add(const std::string& words);

    bool isEmpty() const { return _moves.empty(); }

    // `path` is absolute. Of several folders that it lies in the longest counts; the result is not
    // moved again.
    std::string moved(const std::string& path) const;

private:
    struct Move
    {
        std::string _from; // without "/" at the end, so empty for the root
        std::string _to;   // likewise
    };
    std::vector<Move> _moves;
};
