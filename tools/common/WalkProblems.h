// SPDX-License-Identifier: MIT
//
// What an import missed on its way through folders: what could not be read, links that lead
// nowhere, and folders that only links lead to. All importers tell of it through this class, in
// the same words.
#pragma once

#include "tools/common/FolderWalk.h"

#include <cstdint>
#include <iosfwd>
#include <set>
#include <string>
#include <vector>

struct ImportLosses;

class WalkProblems
{
public:
    // Takes what a walk through `folder` that is at its end met. Returns false when that folder
    // itself could not be read.
    bool add(const FolderWalk& walk, const std::string& folder);

    // A sentence without an end, such as "a/b: there is no counter in it".
    void add(const std::string& problem) { _problems.push_back(problem); }

    // The same of something that could not be read, which is counted.
    void addUnread(const std::string& problem);
    void addUnread(const std::string& path, const std::string& reason);

    // How many folders, links and files could not be read.
    uint64_t unread() const { return _unread; }

    // How many links lead to folders that were not gone through, by that or any other path; the
    // first is a problem. Call it when all folders are added: it forgets the links.
    uint64_t findLinkedFolders();

    // Writes a line for each problem; of very many only the first ones and how many.
    void write(std::ostream& out) const;

    // Counts linked folders and what could not be read, writes all problems on the standard error
    // stream, and forgets them.
    void report(ImportLosses& losses);

private:
    std::vector<std::string> _problems;
    uint64_t _unread = 0;
    std::set<FolderWalk::Identity> _folders; // that were gone through
    std::vector<FolderWalk::Link> _links;    // to folders
};
