// SPDX-License-Identifier: MIT
#include "tools/common/PendingFile.h"

#include "qip/Support/qipAssert.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char temporaryStart[] = ".zem-import-";
const char temporaryEnd[] = ".new";

// The names that a signal handler removes. It may run at any time, so they stand in memory that is
// never freed, and a flag says which ones count.
struct Slot
{
    std::atomic<bool> _isTaken{false};
    std::atomic<bool> _isFilled{false};
    char _name[PATH_MAX] = {};
};

// For the files that CoverageWriter has pending at a time.
constexpr int Slots = 40;
Slot slots[Slots];
// The program is about to end by a signal, which a core file may put off; other threads work on.
std::atomic<bool> isEnding{false};

int takeSlot(const std::string& name)
{
    for (int i = 0; i < Slots; ++i) {
        if (name.size() < PATH_MAX && !slots[i]._isTaken.exchange(true)) {
            std::strcpy(slots[i]._name, name.c_str());
            slots[i]._isFilled = true;
            return i;
        }
    }
    return -1; // the next import removes it
}

extern "C" void removeAndEnd(int signal)
{
    isEnding = true;
    for (const Slot& slot : slots) {
        if (slot._isFilled) {
            unlink(slot._name);
        }
    }
    // The handler was for one time; the second signal ends the program as if there were none.
    raise(signal);
}

std::string randomDigits()
{
    std::random_device device;
    char digits[17];
    std::snprintf(digits, sizeof digits, "%08x%08x", device(), device());
    return digits;
}

bool isTemporaryName(const std::string& name)
{
    const size_t start = sizeof temporaryStart - 1;
    const size_t end = sizeof temporaryEnd - 1;
    return name.size() > start + end && name.compare(0, start, temporaryStart) == 0 &&
           name.compare(name.size() - end, end, temporaryEnd) == 0;
}

// Whether `fd` is a regular file that still has a name.
bool isThere(int fd)
{
    struct stat status = {};
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink > 0;
}

void removeIfDead(const std::string& path)
{
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) {
        return;
    }
    if (isThere(fd) && flock(fd, LOCK_EX | LOCK_NB) == 0) {
        unlink(path.c_str());
    }
    close(fd);
}

} // namespace

PendingFile::~PendingFile()
{
    if (!_temporary.empty()) {
        const int reason = errno;
        unlink(_temporary.c_str());
        errno = reason;
    }
    forget();
}

// The temporary file is gone or has its name: signals leave it alone.
void PendingFile::forget()
{
    if (_slot >= 0) {
        slots[_slot]._isFilled = false;
        slots[_slot]._isTaken = false;
        _slot = -1;
    }
    if (_fd >= 0) {
        const int reason = errno;
        close(_fd); // sync() has told what there was to tell
        errno = reason;
        _fd = -1;
    }
    _temporary.clear();
}

// Makes the file under a new name; false when the system refuses.
bool PendingFile::makeName(const std::string& folder)
{
    // So many digits by chance are nobody else's, on this machine or on another one that shares the
    // folder.
    _temporary = folder + "/" + temporaryStart + randomDigits() + temporaryEnd;
    _slot = takeSlot(_temporary);
    _fd = open(_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (_fd >= 0 && isEnding) {
        unlink(_temporary.c_str()); // the handler may have looked for it before it was there
    }
    if (_fd < 0) {
        forget();
    }
    return _fd >= 0;
}

// The lock says that this file's program lives. False when another import took the file for a dead
// one's before the lock was there.
bool PendingFile::lock()
{
    // A file system without locks refuses; nobody can take the file for dead there.
    (void)flock(_fd, LOCK_EX);
    return isThere(_fd);
}

bool PendingFile::create(const std::string& folder)
{
    qipAssert(_fd < 0);
    while (makeName(folder)) {
        if (lock()) {
            return true;
        }
        forget();
    }
    return false;
}

bool PendingFile::write(const std::string& bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t result = ::write(_fd, bytes.data() + done, bytes.size() - done);
        if (result < 0) {
            return false;
        }
        done += static_cast<size_t>(result);
    }
    return true;
}

void PendingFile::startSync()
{
    // Also gives the file its place on the disk, so that the first sync() of several files can
    // record the places of all.
    (void)sync_file_range(_fd, 0, 0, SYNC_FILE_RANGE_WRITE); // what fails, sync() tells
}

bool PendingFile::sync()
{
    return fsync(_fd) == 0;
}

bool PendingFile::commit(const std::string& path)
{
    if (std::rename(_temporary.c_str(), path.c_str()) != 0) {
        return false;
    }
    forget();
    return true;
}

void PendingFile::removeDead(const std::string& folder)
{
    DIR* entries = opendir(folder.c_str());
    if (entries == nullptr) {
        return;
    }
    while (const dirent* entry = readdir(entries)) {
        if (isTemporaryName(entry->d_name)) {
            removeIfDead(folder + "/" + entry->d_name);
        }
    }
    closedir(entries);
}

void PendingFile::removeOnSignals()
{
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action = {};
            action.sa_handler = removeAndEnd;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(signal, &action, nullptr);
        }
    }
    std::signal(SIGXFSZ, SIG_IGN);
}
