// SPDX-License-Identifier: MIT
#include "tools/formats/ReportFile.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLHeader.h"
#include "tools/common/PendingFile.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <streambuf>
#include <sys/stat.h>
#include <unistd.h>

// Gathers bytes for a descriptor and remembers why it did not take them.
class ReportFile::Buffer : public std::streambuf
{
public:
    explicit Buffer(int fd) : _fd(fd), _reason(0) { setp(_bytes, _bytes + sizeof _bytes); }

    // Of the first write that failed; 0 when none did.
    int reason() const { return _reason; }

protected:
    int overflow(int c) override
    {
        if (sync() != 0) {
            return traits_type::eof();
        }
        if (c != traits_type::eof()) {
            *pptr() = static_cast<char>(c);
            pbump(1);
        }
        return 0;
    }

    int sync() override
    {
        const bool isWritten =
            _reason == 0 && writeAll(pbase(), static_cast<size_t>(pptr() - pbase()));
        setp(_bytes, _bytes + sizeof _bytes);
        return isWritten ? 0 : -1;
    }

private:
    bool writeAll(const char* bytes, size_t size)
    {
        while (size > 0) {
            const ssize_t written = ::write(_fd, bytes, size);
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                _reason = written < 0 ? errno : ENOSPC;
                return false;
            }
            bytes += written;
            size -= static_cast<size_t>(written);
        }
        return true;
    }

    const int _fd;
    int _reason;
    char _bytes[64 * 1024];
};

struct ReportFile::Pending
{
    PendingFile file;
};

namespace {

// Waits until a name in `folder` is on the disk, where the file system can tell.
bool syncFolder(const std::string& folder)
{
    const int fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        return true; // a folder may be written into and not read
    }
    const bool isDone = fsync(fd) == 0 || errno == EINVAL;
    const int reason = errno;
    close(fd);
    errno = reason;
    return isDone;
}

// Whether the file begins as maps and logs do.
bool isRecordFile(const char* path)
{
    const int fd = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    unsigned char bytes[4] = {};
    const bool isRead = fd >= 0 && read(fd, bytes, sizeof bytes) == sizeof bytes;
    if (fd >= 0) {
        close(fd);
    }
    return isRead && qipGetBig32(bytes) == qipVLHeader::Magic;
}

// Where the file is in the end that `path` names through links; empty with errno set when that
// cannot be said.
std::string resolved(const char* path)
{
    const std::unique_ptr<char, decltype(&std::free)> whole(realpath(path, nullptr), std::free);
    return whole ? whole.get() : "";
}

std::string folderOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

ReportFile::ReportFile() : _stream(nullptr), _fd(-1) {}

ReportFile::~ReportFile()
{
    if (_fd >= 0) {
        ::close(_fd);
    }
}

bool ReportFile::fail(const char* problem)
{
    _problem = problem;
    return false;
}

bool ReportFile::open(const char* path)
{
    struct stat status = {};
    const bool isThere = stat(path, &status) == 0;
    if (!isThere && errno != ENOENT) {
        return fail(std::strerror(errno));
    }
    if (isThere && S_ISDIR(status.st_mode)) {
        return fail(std::strerror(EISDIR));
    }
    if (isThere && !S_ISREG(status.st_mode)) {
        return openDirectly(path);
    }
    if (isThere && isRecordFile(path)) {
        return fail("it is a map or a log, which is not written over; give another name");
    }
    // What is there keeps its links: the file behind them is replaced.
    const std::string target = isThere ? resolved(path) : path;
    return target.empty() ? fail(std::strerror(errno)) : openPending(target);
}

bool ReportFile::openPending(const std::string& path)
{
    _path = path;
    PendingFile::removeDead(folderOf(path));
    _pending = std::make_unique<Pending>();
    if (!_pending->file.create(folderOf(path))) {
        return fail(std::strerror(errno));
    }
    _buffer = std::make_unique<Buffer>(_pending->file.descriptor());
    _stream.rdbuf(_buffer.get());
    return true;
}

bool ReportFile::openDirectly(const char* path)
{
    _fd = ::open(path, O_WRONLY | O_CLOEXEC);
    if (_fd < 0) {
        return fail(std::strerror(errno));
    }
    _buffer = std::make_unique<Buffer>(_fd);
    _stream.rdbuf(_buffer.get());
    return true;
}

bool ReportFile::isTerminal() const
{
    return _fd >= 0 && isatty(_fd) != 0;
}

bool ReportFile::close()
{
    _stream.flush();
    if (_buffer->reason() != 0) {
        return fail(std::strerror(_buffer->reason()));
    }
    if (!_stream) {
        return fail(std::strerror(ENOMEM)); // a stream keeps to itself that memory ran out
    }
    if (!_pending) {
        const int result = ::close(_fd);
        _fd = -1;
        return result == 0 || fail(std::strerror(errno));
    }
    const bool isDone =
        _pending->file.sync() && _pending->file.commit(_path) && syncFolder(folderOf(_path));
    return isDone || fail(std::strerror(errno));
}
