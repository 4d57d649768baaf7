// SPDX-License-Identifier: MIT
#include "tools/common/FolderWalk.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

FolderWalk::FolderWalk(const std::string& folder) : _waiting{folder} {}

FolderWalk::~FolderWalk()
{
    closeCurrent();
}

void FolderWalk::closeCurrent()
{
    if (_current != nullptr) {
        closedir(_current);
        _current = nullptr;
    }
}

// Opens folders until one can be read; false when none is left.
bool FolderWalk::openNext()
{
    while (!_waiting.empty()) {
        _folder = std::move(_waiting.back());
        _waiting.pop_back();
        _current = opendir(_folder.c_str());
        if (_current != nullptr) {
            struct stat status = {};
            if (fstat(dirfd(_current), &status) == 0) {
                _folders.emplace_back(status.st_dev, status.st_ino);
            }
            return true;
        }
        _problems.push_back({_folder, std::strerror(errno), false});
    }
    return false;
}

bool FolderWalk::isFolder(const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type == DT_DIR;
    }
    struct stat status = {};
    if (entry.d_type == DT_UNKNOWN && lstat(_path.c_str(), &status) == 0 &&
        !S_ISLNK(status.st_mode)) {
        return S_ISDIR(status.st_mode);
    }
    if (stat(_path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        _links.push_back({_path, {status.st_dev, status.st_ino}});
    }
    return false;
}

bool FolderWalk::isLock() const
{
    return _path.compare(_path.rfind('/') + 1, 2, ".#") == 0;
}

// Where the link leads that is the entry; empty when it is none.
std::string FolderWalk::missingTarget() const
{
    std::error_code failure;
    const std::filesystem::path target = std::filesystem::read_symlink(_path, failure);
    return failure ? std::string() : target.string();
}

bool FolderWalk::isFile(Sought sought)
{
    if (_type == DT_REG) {
        return true;
    }
    struct stat status = {};
    if (stat(_path.c_str(), &status) == 0) {
        return S_ISREG(status.st_mode);
    }
    const int error = errno;
    const std::string target = error == ENOENT ? missingTarget() : std::string();
    if (error != ENOENT || (sought == Sought::ByName && !isLock())) {
        _problems.push_back({_path,
                             target.empty() ? std::string(std::strerror(error))
                                            : "it is a link to " + target + ", which is not there",
                             true});
    }
    return false;
}

bool FolderWalk::next()
{
    while (_current != nullptr || openNext()) {
        errno = 0; // tells the end of the folder from an error
        const dirent* entry = readdir(_current);
        if (entry == nullptr) {
            if (errno != 0) {
                _problems.push_back({_folder, std::strerror(errno), false});
            }
            closeCurrent();
            continue;
        }
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        _path = _folder;
        _path += _path.empty() || _path.back() != '/' ? "/" : "";
        _path += entry->d_name;
        if (isFolder(*entry)) {
            _waiting.push_back(_path);
            continue;
        }
        _type = entry->d_type;
        return true;
    }
    return false;
}
