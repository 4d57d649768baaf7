// SPDX-License-Identifier: MIT
#include "tools/common/OutputFolder.h"

#include "qip/Support/qipAssert.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

OutputFolder::~OutputFolder()
{
    if (_fd >= 0) {
        close(_fd);
    }
}

bool OutputFolder::makeShared(const std::string& folder)
{
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure) {
        errno = failure.value();
        return false;
    }
    return open(folder, LOCK_SH);
}

bool OutputFolder::takeAlone(const std::string& folder)
{
    return open(folder, LOCK_EX);
}

bool OutputFolder::open(const std::string& folder, int lock)
{
    qipAssert(_fd < 0);
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(folder.c_str(), nullptr),
                                                           std::free);
    if (real == nullptr) {
        return false;
    }
    _path = real.get();
    _fd = ::open(real.get(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (_fd < 0) {
        return false;
    }
    (void)flock(_fd, lock); // a file system without locks refuses; there is nothing to wait for
    return true;
}

bool OutputFolder::sync()
{
    // Some file systems have no such thing for folders.
    return fsync(_fd) == 0 || errno == EINVAL;
}
