// SPDX-License-Identifier: MIT
#include "tools/run/OutputFilter.h"

#include "tools/run/TextReplacer.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr size_t Piece = 4096; // bytes

bool isSameFile(int a, int b)
{
    struct stat first = {};
    struct stat second = {};
    return fstat(a, &first) == 0 && fstat(b, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

// Returns false when nobody reads any more. A full disk is passed over, as the program itself
// would.
bool writeAll(int fd, const std::string& text)
{
    for (size_t done = 0; done < text.size();) {
        const ssize_t result = write(fd, text.data() + done, text.size() - done);
        if (result < 0 && errno != EINTR) {
            return errno != EPIPE;
        }
        done += result < 0 ? 0 : static_cast<size_t>(result);
    }
    return true;
}

} // namespace

OutputFilter::OutputFilter(std::string from, std::string to)
    : _from(std::move(from)), _to(std::move(to))
{}

OutputFilter::~OutputFilter()
{
    close();
}

void OutputFilter::close()
{
    if (_error >= 0 && _error != _output) {
        ::close(_error);
    }
    if (_output >= 0) {
        ::close(_output);
    }
    _output = _error = -1;
}

void OutputFilter::start()
{
    _output = open(STDOUT_FILENO);
    _error =
        _output >= 0 && isSameFile(STDOUT_FILENO, STDERR_FILENO) ? _output : open(STDERR_FILENO);
}

// A terminal of the same size, which changes nothing of what is written to it.
bool OutputFilter::makeTerminal(int stream, int& reading, int& writing) const
{
    reading = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    const bool isMade = reading >= 0 && grantpt(reading) == 0 && unlockpt(reading) == 0;
    writing = isMade ? ::open(ptsname(reading), O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
    if (writing < 0) {
        ::close(reading);
        return false;
    }
    termios mode = {};
    if (tcgetattr(stream, &mode) == 0) {
        cfmakeraw(&mode);
        (void)tcsetattr(writing, TCSANOW, &mode);
    }
    winsize size = {};
    if (ioctl(stream, TIOCGWINSZ, &size) == 0) {
        (void)ioctl(writing, TIOCSWINSZ, &size);
    }
    return true;
}

bool OutputFilter::makeEnds(int stream, int& reading, int& writing) const
{
    if (isatty(stream) == 1) {
        return makeTerminal(stream, reading, writing);
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    reading = ends[0];
    writing = ends[1];
    return true;
}

// What the process between the program and `stream` does.
void OutputFilter::pass(int reading, int stream) const
{
    TextReplacer replacer(_from, _to);
    char bytes[Piece];
    for (;;) {
        const ssize_t size = read(reading, bytes, sizeof bytes);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            break; // a terminal ends with an error
        }
        if (!writeAll(stream, replacer.next(bytes, static_cast<size_t>(size)))) {
            return;
        }
    }
    (void)writeAll(stream, replacer.end());
}

// Returns where the program is to write what is meant for `stream`, -1 when it shall do that
// itself.
int OutputFilter::open(int stream)
{
    int reading = -1;
    int writing = -1;
    struct stat status = {};
    if (fstat(stream, &status) != 0 || !makeEnds(stream, reading, writing)) {
        return -1;
    }
    const pid_t pid = fork();
    if (pid == 0) {
        ::close(writing);
        close();
        pass(reading, stream);
        _exit(0);
    }
    ::close(reading);
    if (pid < 0) {
        ::close(writing);
        return -1;
    }
    return writing;
}
