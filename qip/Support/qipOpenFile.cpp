// SPDX-License-Identifier: MIT
#include "qip/Support/qipOpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

int qipOpenFile(const char* path, struct stat& status)
{
    // Without O_NOCTTY a terminal's name could make it this program's own.
    const int fd = ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        return -1;
    }
    int reason = 0;
    if (fstat(fd, &status) != 0) {
        reason = errno;
    } else if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
        reason = EOPNOTSUPP;
    }
    if (reason == 0) {
        return fd;
    }
    ::close(fd);
    errno = reason;
    return -1;
}
