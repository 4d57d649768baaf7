// SPDX-License-Identifier: MIT
#include "tools/run/CoveredProgram.h"

#include "tools/common/FolderWalk.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

const char wantedName[] = "__llvm_covmap";   // with the zero byte behind it
constexpr uint64_t MostSections = 1u << 16u; // linked files have dozens
constexpr size_t IdentSize = 20;

} // namespace

CoveredProgram::~CoveredProgram()
{
    if (_fd >= 0) {
        close(_fd);
    }
}

bool CoveredProgram::bytesAt(uint64_t offset, unsigned char* bytes, size_t size) const
{
    return offset <= INT64_MAX - size &&
           pread(_fd, bytes, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

// 0 where the file ends before.
uint64_t CoveredProgram::numberAt(uint64_t offset, size_t size) const
{
    unsigned char bytes[sizeof(uint64_t)] = {};
    if (!bytesAt(offset, bytes, size)) {
        return 0;
    }
    uint64_t number = 0;
    for (size_t i = 0; i < size; ++i) {
        number = number << 8u | bytes[_isBigEndian ? i : size - 1 - i];
    }
    return number;
}

uint64_t CoveredProgram::fieldAt(uint64_t offset32, size_t size32, uint64_t offset64,
                                 size_t size64) const
{
    return _is64 ? numberAt(offset64, size64) : numberAt(offset32, size32);
}

bool CoveredProgram::readHeader()
{
    unsigned char ident[IdentSize];
    if (!bytesAt(0, ident, sizeof ident) || std::memcmp(ident, "\177ELF", 4) != 0) {
        return false;
    }
    _is64 = ident[4] == 2;
    _isBigEndian = ident[5] == 2;
    const uint64_t type = numberAt(16, 2);
    return type == 2 || type == 3;
}

// Whether the section of the header at `header` has the name; `names` is where names are.
bool CoveredProgram::isNamed(uint64_t header, uint64_t names) const
{
    unsigned char name[sizeof wantedName];
    return bytesAt(names + numberAt(header, 4), name, sizeof name) &&
           std::memcmp(name, wantedName, sizeof name) == 0;
}

bool CoveredProgram::check()
{
    if (!readHeader()) {
        return false;
    }
    const uint64_t headers = fieldAt(32, 4, 40, 8);
    const uint64_t headerSize = fieldAt(46, 2, 58, 2);
    uint64_t nSections = fieldAt(48, 2, 60, 2);
    uint64_t ofNames = fieldAt(50, 2, 62, 2);
    if (headers == 0 || headerSize < 40 || headers > INT64_MAX / 2) {
        return false;
    }
    if (nSections == 0) {
        nSections = fieldAt(headers + 20, 4, headers + 32, 8);
    }
    if (ofNames == 0xffff) {
        ofNames = fieldAt(headers + 24, 4, headers + 40, 4);
    }
    const uint64_t namesHeader = headers + ofNames * headerSize;
    const uint64_t names = fieldAt(namesHeader + 16, 4, namesHeader + 24, 8);
    if (names > INT64_MAX / 2) {
        return false;
    }
    for (uint64_t i = 0; i < std::min(nSections, MostSections); ++i) {
        if (isNamed(headers + i * headerSize, names)) {
            return true;
        }
    }
    return false;
}

bool CoveredProgram::isOpenOn(int fd)
{
    CoveredProgram program;
    program._fd = fd;
    return program.check();
}

bool CoveredProgram::is(const std::string& path)
{
    // A pipe or a device could hold the program for ever.
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    if (fd < 0) {
        return false;
    }
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(fd);
        return false;
    }
    return isOpenOn(fd);
}

std::vector<std::string> CoveredProgram::below(const std::string& folder)
{
    std::vector<std::string> paths;
    FolderWalk walk(folder);
    while (walk.next()) {
        if (walk.isFile()) {
            paths.push_back(walk.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    std::set<std::pair<dev_t, ino_t>> seen;
    const auto isUnwanted = [&seen](const std::string& path) {
        struct stat status = {};
        return stat(path.c_str(), &status) != 0 || !is(path) ||
               !seen.insert({status.st_dev, status.st_ino}).second;
    };
    paths.erase(std::remove_if(paths.begin(), paths.end(), isUnwanted), paths.end());
    return paths;
}
