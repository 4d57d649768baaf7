// SPDX-License-Identifier: MIT
#include "tests/support/DataFiles.h"

std::string mapHeader(uint32_t magic, uint32_t version)
{
    return ByteString().u32(magic).u32(0).u32(0).u32(version).zeros(48).bytes();
}

std::string logHeader(uint32_t magic, uint32_t version, uint32_t executionTime)
{
    return ByteString().u32(magic).u32(0).u32(0).u32(version).u32(executionTime).zeros(44).bytes();
}

std::string mapPayload(const MapSource& source)
{
    auto nBlocks = static_cast<size_t>(source.moreBlocks);
    for (const MapFunc& func : source.funcs) {
        nBlocks += func.blocks.size();
    }
    ByteString payload;
    payload.name(source.path).u32(source.timeModified).u32(static_cast<uint32_t>(nBlocks));
    payload.u32(static_cast<uint32_t>(source.funcs.size()));
    for (const MapFunc& func : source.funcs) {
        payload.name(func.name).u32(func.startLine).u32(func.endLine);
        payload.u32(static_cast<uint32_t>(func.blocks.size()));
        for (const MapBlock& block : func.blocks) {
            payload.u16(block.startLine).u16(block.stopLine);
        }
    }
    return payload.bytes();
}

std::string logPayload(const LogSource& source)
{
    ByteString payload;
    payload.name(source.path).name(source.mapPath).u32(source.timeModified).u32(source.isBoolean);
    payload.u32(static_cast<uint32_t>(source.counts.size()));
    for (const uint32_t count : source.counts) {
        payload.u32(count);
    }
    return payload.bytes();
}

RecFileBuilder mapFile(const std::vector<MapSource>& sources)
{
    RecFileBuilder file(64);
    file.userHeader(mapHeader());
    for (const MapSource& source : sources) {
        file.record(MapTag, mapPayload(source));
    }
    return file;
}

RecFileBuilder logFile(const std::vector<LogSource>& sources)
{
    RecFileBuilder file(64);
    file.userHeader(logHeader());
    for (const LogSource& source : sources) {
        file.record(LogTag, logPayload(source));
    }
    return file;
}
