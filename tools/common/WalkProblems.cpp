// SPDX-License-Identifier: MIT
#include "tools/common/WalkProblems.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/ImportLosses.h"

#include <algorithm>
#include <iostream>

bool WalkProblems::add(const FolderWalk& walk, const std::string& folder)
{
    _folders.insert(walk.folders().begin(), walk.folders().end());
    _links.insert(_links.end(), walk.links().begin(), walk.links().end());
    bool isRead = true;
    for (const FolderWalk::Problem& problem : walk.problems()) {
        addUnread(problem.text());
        isRead = isRead && (problem._isEntry || problem._folder != folder);
    }
    return isRead;
}

void WalkProblems::addUnread(const std::string& problem)
{
    add(problem);
    ++_unread;
}

void WalkProblems::addUnread(const std::string& path, const std::string& reason)
{
    addUnread(path + ": " + reason);
}

uint64_t WalkProblems::findLinkedFolders()
{
    uint64_t result = 0;
    std::string first;
    for (const FolderWalk::Link& link : _links) {
        if (_folders.count(link._target) == 0) {
            first = result == 0 ? link._path : std::min(first, link._path);
            ++result;
        }
    }
    if (result > 0) {
        add(first + " is a link to a folder, which was not looked through: if it holds something " +
            "for this import, name it, too");
    }
    _links.clear();
    return result;
}

void WalkProblems::write(std::ostream& out) const
{
    constexpr size_t MostLines = 20;
    for (size_t i = 0; i < std::min(_problems.size(), MostLines); ++i) {
        out << "zem-import: " << qipVisibleText(_problems[i].c_str()) << '\n';
    }
    if (_problems.size() > MostLines) {
        out << "zem-import: and " << _problems.size() - MostLines << " more like these\n";
    }
}

void WalkProblems::report(ImportLosses& losses)
{
    losses._unreadFolders += _unread;
    losses._linkedFolders += findLinkedFolders();
    write(std::cerr);
    _problems.clear();
    _unread = 0;
}
