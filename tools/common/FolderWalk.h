// SPDX-License-Identifier: MIT
//
// Goes through a folder and all below. Links to folders are not followed: they may lead out of the
// tree, or round in it. Such a link, and a folder that cannot be read, is remembered and the walk
// goes on with the others, so that a caller can say what it missed. Holds one folder open at a
// time.
#pragma once

#include <dirent.h>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

class FolderWalk
{
public:
    // What went wrong with a folder, or with an entry that isFile() was asked about.
    struct Problem
    {
        std::string _folder; // or the entry's path
        std::string _reason; // the system's, or where a link leads
        bool _isEntry = false;

        // Such as "cannot read the folder a/b: Permission denied".
        std::string text() const
        {
            return (_isEntry ? "cannot look at " : "cannot read the folder ") + _folder + ": " +
                   _reason;
        }
    };

    // What tells one folder from all others, by whatever path.
    using Identity = std::pair<dev_t, ino_t>;

    struct Link
    {
        std::string _path;
        Identity _target;
    };

    explicit FolderWalk(const std::string& folder);
    ~FolderWalk();
    FolderWalk(const FolderWalk&) = delete;
    FolderWalk& operator=(const FolderWalk&) = delete;

    // Goes to the next entry that is no folder, in no certain order. Returns false at the end.
    bool next();

    // How the caller knows the files that it seeks.
    enum class Sought { ByName, ByContent };

    // The entry: its path, which begins with the folder given, and whether it is a regular file or
    // a link to one. What a link leads to and cannot be seen is a problem. Of a link that leads
    // nowhere that holds for one whose name is sought, because what it stood for is lost, but for
    // the lock of an editor: ".#" and the name of a file. REQUIRES: next() returned true.
    const std::string& path() const { return _path; }
    bool isFile(Sought sought = Sought::ByName);

    const std::vector<Problem>& problems() const { return _problems; }
    // Links to folders, and the folders that the walk went through.
    const std::vector<Link>& links() const { return _links; }
    const std::vector<Identity>& folders() const { return _folders; }

private:
    bool openNext();
    void closeCurrent();
    bool isFolder(const dirent& entry);
    bool isLock() const;
    std::string missingTarget() const;

    std::vector<std::string> _waiting; // folders to come
    std::string _folder;               // the one that is open
    DIR* _current = nullptr;
    std::string _path;
    unsigned char _type = DT_UNKNOWN; // of the entry
    std::vector<Problem> _problems;
    std::vector<Link> _links;
    std::vector<Identity> _folders;
};
