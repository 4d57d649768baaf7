// SPDX-License-Identifier: MIT
#include "qip/Support/qipFileState.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>

namespace {

constexpr int64_t Second = 1000 * 1000 * 1000; // in nanoseconds, as all times here

// Who writes more often than this does not stop soon.
constexpr int MostWaits = 4;

int64_t nanoseconds(const timespec& time)
{
    return time.tv_sec * Second + time.tv_nsec;
}

bool isSameTime(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// How far back a time must lie so that no later write gets the same one.
int64_t granularityOf(const struct stat& status)
{
    if (status.st_ctim.tv_nsec == 0) {
        return 2 * Second; // whole seconds, of which some file systems have the even ones alone
    }
    timespec tick = {};
    clock_getres(CLOCK_REALTIME_COARSE, &tick); // the clock that files get their times from
    return 2 * nanoseconds(tick);
}

// How long until no write can get the time `then` any more; 0 when that is so. No clock that goes
// right gives a time that lies further ahead than the granularity, so waiting would not help.
int64_t remaining(const timespec& then, int64_t now, int64_t granularity)
{
    const int64_t age = now - nanoseconds(then);
    return age > granularity || age < -granularity ? 0 : granularity - age + 1;
}

int64_t remaining(const struct stat& status)
{
    timespec time = {};
    clock_gettime(CLOCK_REALTIME, &time);
    const int64_t now = nanoseconds(time);
    const int64_t granularity = granularityOf(status);
    return std::max(remaining(status.st_ctim, now, granularity),
                    remaining(status.st_mtim, now, granularity));
}

} // namespace

qipFileState::qipFileState() : _status{} {}

const char* qipFileState::watch(int fd)
{
    for (int waits = 0;; ++waits) {
        if (fstat(fd, &_status) != 0) {
            return std::strerror(errno);
        }
        // Whom a file without a name belongs to has it open already.
        const int64_t rest =
            S_ISREG(_status.st_mode) && _status.st_nlink != 0 ? remaining(_status) : 0;
        if (rest == 0) {
            return nullptr;
        }
        if (waits == MostWaits) {
            return "It is being written to";
        }
        const timespec pause = {static_cast<time_t>(rest / Second),
                                static_cast<long>(rest % Second)};
        nanosleep(&pause, nullptr);
    }
}

const char* qipFileState::change(int fd) const
{
    struct stat now = {};
    if (fstat(fd, &now) != 0) {
        return std::strerror(errno);
    }
    // A name that comes or goes changes the last of the times, too.
    const bool isSame =
        now.st_size == _status.st_size && isSameTime(now.st_mtim, _status.st_mtim) &&
        (isSameTime(now.st_ctim, _status.st_ctim) || now.st_nlink != _status.st_nlink);
    return isSame ? nullptr : "It was written to while it was read";
}
