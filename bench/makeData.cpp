// SPDX-License-Identifier: MIT
//
// Writes a map file (or several) and log files of a program that never existed, always the same for
// the same numbers. What bench/run measures is loaded from these.
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Shape
{
    int files;
    int funcs;  // in each file
    int blocks; // in each function
    int logs;
    int maps;    // the files are shared out evenly
    int classes; // to which the functions belong in turn; 0: no member functions
};

constexpr int FilesInDirectory = 50;
constexpr uint32_t Moment = 1000000000; // seconds since the epoch

// A fixed sequence of numbers that looks like none.
class Sequence
{
public:
    explicit Sequence(uint64_t seed) : _state(seed * 2862933555777941757u + 3037000493u) {}
    uint32_t next()
    {
        _state = _state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(_state >> 33);
    }

private:
    uint64_t _state;
};

std::string functionName(const Shape& shape, int file, int func)
{
    // Spread over the alphabet, so that sorting has something to do.
    const int number = file * shape.funcs + func;
    const std::string plain = "f" + std::to_string(Sequence(static_cast<uint64_t>(number)).next()) +
                              "_" + std::to_string(number);
    if (shape.classes == 0) {
        return plain + "__FiPCc";
    }
    return "Class" + std::to_string(number % shape.classes) + "::" + plain + "__FiPCc";
}

CovFile makeFile(const Shape& shape, int number)
{
    CovFile file;
    file._path = "/src/part" + std::to_string(number / FilesInDirectory) + "/file" +
                 std::to_string(number) + ".cpp";
    file._timeModified = Moment;
    uint32_t line = 1;
    for (int f = 0; f < shape.funcs; ++f) {
        CovFunction func;
        func._storedName = functionName(shape, number, f);
        func._startLine = line;
        for (int b = 0; b < shape.blocks; ++b) {
            CovBlock block;
            block._startLine = static_cast<uint16_t>(line % 65535 + 1);
            block._stopLine = block._startLine;
            func._blocks.push_back(block);
            ++line;
        }
        func._endLine = line;
        file._functions.push_back(func);
    }
    return file;
}

// Two blocks of three run, a few of them often.
std::vector<uint32_t> run(const CovFile& file, uint64_t seed)
{
    Sequence numbers(seed);
    std::vector<uint32_t> counts;
    for (const CovFunction& func : file._functions) {
        for (size_t i = 0; i < func._blocks.size(); ++i) {
            const uint32_t number = numbers.next();
            counts.push_back(number % 3 == 0 ? 0 : number % 1000);
        }
    }
    return counts;
}

[[noreturn]] void fail(const std::string& path, int code)
{
    std::fprintf(stderr, "%s: %s\n", path.c_str(), qipVLRecFile::error(code));
    std::exit(1);
}

void check(int code, const std::string& path)
{
    if (code < 0) {
        fail(path, code);
    }
}

std::string mapPath(const std::string& dir, const Shape& shape, int file)
{
    const int map = static_cast<int>(static_cast<int64_t>(file) * shape.maps / shape.files);
    return dir + "/map" + std::to_string(map) + ".map";
}

void writeMaps(const std::string& dir, const Shape& shape)
{
    MapWriter writer;
    std::string open;
    for (int i = 0; i < shape.files; ++i) {
        const std::string path = mapPath(dir, shape, i);
        if (path != open) {
            check(writer.close(), open);
            check(writer.create(path.c_str()), path);
            open = path;
        }
        check(writer.add(makeFile(shape, i)), path);
    }
    check(writer.close(), open);
}

void writeLog(const std::string& dir, const Shape& shape, int log)
{
    const std::string path = dir + "/run" + std::to_string(log) + ".log";
    LogWriter writer;
    check(writer.create(path.c_str(), Moment), path);
    for (int i = 0; i < shape.files; ++i) {
        const CovFile file = makeFile(shape, i);
        const uint64_t seed = static_cast<uint64_t>(log) * 1000003 + static_cast<uint64_t>(i);
        check(writer.add(file, run(file, seed), mapPath(dir, shape, i), false), path);
    }
    check(writer.close(), path);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 8) {
        std::fprintf(stderr, "usage: %s DIR FILES FUNCTIONS BLOCKS LOGS MAPS CLASSES\n", argv[0]);
        return 2;
    }
    const Shape shape = {std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]),
                         std::atoi(argv[5]), std::atoi(argv[6]), std::atoi(argv[7])};
    writeMaps(argv[1], shape);
    for (int log = 0; log < shape.logs; ++log) {
        writeLog(argv[1], shape, log);
    }
    return 0;
}
