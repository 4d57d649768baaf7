// SPDX-License-Identifier: MIT
#include "tools/run/CounterFolder.h"

#include "qip/Support/qipAssert.h"
#include "tools/common/SourcePath.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

const char nameStart[] = "zem-run-counters.";
constexpr size_t RandomLetters = 6; // of mkdtemp
constexpr mode_t PrivateMode = 0700;

std::string temporaryFolder()
{
    const char* folder = std::getenv("TMPDIR");
    return absolutePath("", folder != nullptr && folder[0] != '\0' ? folder : "/tmp");
}

bool isFolderName(const std::string& name)
{
    const size_t start = sizeof nameStart - 1;
    return name.size() == start + RandomLetters && name.compare(0, start, nameStart) == 0;
}

int openFolder(const std::string& path)
{
    return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

// Whether the folder that `fd` is open on still has the name `path` and is this user's.
bool isOwn(int fd, const std::string& path)
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(fd, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev &&
           opened.st_uid == geteuid();
}

void removeIfDead(const std::string& path)
{
    const int fd = openFolder(path);
    if (fd < 0) {
        return;
    }
    if (isOwn(fd, path) && flock(fd, LOCK_EX | LOCK_NB) == 0) {
        std::error_code failure;
        std::filesystem::remove_all(path, failure);
    }
    close(fd);
}

} // namespace

CounterFolder::~CounterFolder()
{
    (void)remove(); // who wants to know has asked before
}

bool CounterFolder::fail(const std::string& what, int reason)
{
    _problem = what + ": " + std::strerror(reason);
    return false;
}

// Makes and locks a folder; false with errno set when the system refuses.
bool CounterFolder::makeOne()
{
    const std::string wanted = temporaryFolder() + "/" + nameStart + "XXXXXX";
    std::vector<char> name(wanted.c_str(), wanted.c_str() + wanted.size() + 1);
    if (mkdtemp(name.data()) == nullptr) {
        return false;
    }
    _path = name.data();
    _fd = openFolder(_path);
    if (_fd >= 0) {
        (void)flock(_fd, LOCK_EX); // without locks nobody can take the folder for a dead one's
    }
    return _fd >= 0;
}

bool CounterFolder::create()
{
    qipAssert(_fd < 0);
    // Clang's runtime takes %x for a pattern, and knows no way to write a plain one.
    if (temporaryFolder().find('%') != std::string::npos) {
        _problem = "cannot keep counters in " + temporaryFolder() +
                   ": its name has a %; set TMPDIR to another folder";
        return false;
    }
    do {
        if (_fd >= 0) {
            close(_fd); // another zem-run took it for a dead one's before the lock was there
        }
        if (!makeOne()) {
            return fail("cannot make a folder for counters in " + temporaryFolder(), errno);
        }
    } while (!isOwn(_fd, _path));
    for (const std::string& folder : {all(), each(), driver()}) {
        if (mkdir(folder.c_str(), PrivateMode) != 0) {
            return fail("cannot make the folder " + folder, errno);
        }
    }
    return true;
}

bool CounterFolder::remove()
{
    if (_fd < 0) {
        return true;
    }
    std::error_code failure;
    std::filesystem::remove_all(_path, failure);
    close(_fd);
    _fd = -1;
    return !failure || fail("cannot remove " + _path, failure.value());
}

void CounterFolder::removeDead()
{
    const std::string folder = temporaryFolder();
    DIR* entries = opendir(folder.c_str());
    if (entries == nullptr) {
        return;
    }
    while (const dirent* entry = readdir(entries)) {
        if (isFolderName(entry->d_name)) {
            removeIfDead(folder + "/" + entry->d_name);
        }
    }
    closedir(entries);
}
