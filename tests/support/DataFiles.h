// SPDX-License-Identifier: MIT
//
// Well-formed map and log files for tests, in the words of coverage. What is not named is zero.
//
//     mapFile({{"src/a.c", {{"main__Fv", 1, 9, {{1, 4}, {5, 9}}}}}}).write(dir.path("p.map"));
//     logFile({{"src/a.c", dir.path("p.map"), {3, 0}}}).write(dir.path("p.log"));
#pragma once

#include "tests/support/RecFileBuilder.h"

#include <cstdint>
#include <string>
#include <vector>

struct MapBlock
{
    uint32_t startLine;
    uint32_t stopLine;
};

struct MapFunc
{
    std::string name; // as stored
    uint32_t startLine = 0;
    uint32_t endLine = 0;
    std::vector<MapBlock> blocks = {};
};

struct MapSource
{
    std::string path;
    std::vector<MapFunc> funcs = {};
    uint32_t timeModified = 0;
    int moreBlocks = 0; // that the file is said to have, beside those of its functions
};

struct LogSource
{
    std::string path;
    std::string mapPath;
    std::vector<uint32_t> counts = {}; // one for each block of the source file
    uint32_t timeModified = 0;
    uint32_t isBoolean = 0;
};

constexpr uint32_t MapTag = 100;
constexpr uint32_t LogTag = 101;

// The 64 bytes behind the file header.
std::string mapHeader(uint32_t magic = 0x6704, uint32_t version = 2);
std::string logHeader(uint32_t magic = 0x6703, uint32_t version = 2, uint32_t executionTime = 0);

// The bytes of one record, without its record header.
std::string mapPayload(const MapSource& source);
std::string logPayload(const LogSource& source);

// Whole files.
RecFileBuilder mapFile(const std::vector<MapSource>& sources);
RecFileBuilder logFile(const std::vector<LogSource>& sources);
