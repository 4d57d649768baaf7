// SPDX-License-Identifier: MIT
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include "tools/import/llvm/md5Low.h"

#include <zlib.h>

LlvmNumbers& LlvmNumbers::fixed(uint64_t value, size_t size)
{
    for (size_t i = 0; i < size; ++i) {
        const size_t shift = 8 * (_isBigEndian ? size - 1 - i : i);
        _bytes += static_cast<char>(value >> shift);
    }
    return *this;
}

LlvmNumbers& LlvmNumbers::leb(uint64_t value)
{
    while (value >= 0x80) {
        _bytes += static_cast<char>((value & 0x7f) | 0x80);
        value >>= 7;
    }
    _bytes += static_cast<char>(value);
    return *this;
}

LlvmNumbers& LlvmNumbers::text(const std::string& bytes)
{
    _bytes += bytes;
    return *this;
}

LlvmNumbers& LlvmNumbers::align(size_t unit)
{
    _bytes.resize((_bytes.size() + unit - 1) / unit * unit);
    return *this;
}

std::string lebs(const std::vector<uint64_t>& numbers)
{
    LlvmNumbers bytes;
    for (const uint64_t number : numbers) {
        bytes.leb(number);
    }
    return bytes.bytes();
}

std::string llvmText(const std::string& text, bool isPacked)
{
    if (!isPacked) {
        return LlvmNumbers().leb(text.size()).leb(0).text(text).bytes();
    }
    uLongf size = compressBound(text.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(text.data()), text.size());
    packed.resize(size);
    return LlvmNumbers().leb(text.size()).leb(size).text(packed).bytes();
}

std::string plainMapping(const std::vector<std::vector<uint32_t>>& regions)
{
    LlvmNumbers bytes;
    bytes.leb(1).leb(1).leb(0).leb(regions.size());
    uint32_t line = 0;
    for (const std::vector<uint32_t>& region : regions) {
        bytes.leb(region[0]).leb(region[1] - line).leb(region[2]).leb(region[3] - region[1]);
        bytes.leb(region[4]);
        line = region[1];
    }
    return bytes.bytes();
}

std::string elfFile(const LlvmTarget& target, const std::vector<ElfPart>& parts, uint16_t type)
{
    const size_t word = target._is64 ? 8 : 4;
    const size_t headSize = target._is64 ? 64 : 52;
    std::string names(1, '\0');
    std::string contents;
    LlvmNumbers table(target._isBigEndian);
    table.text(std::string(target._is64 ? 64 : 40, '\0'));
    std::vector<ElfPart> all = parts;
    all.push_back({".shstrtab", "", 3});
    for (ElfPart& part : all) {
        const size_t name = names.size();
        names += part._name + '\0';
        if (&part == &all.back()) {
            part._bytes = names;
        }
        contents.resize((contents.size() + 7) / 8 * 8);
        table.u32(name).u32(part._type).fixed(part._flags, word).fixed(part._address, word);
        table.fixed(headSize + contents.size(), word).fixed(part._bytes.size(), word);
        table.u32(0).u32(0).fixed(8, word).fixed(0, word);
        contents += part._type == 8 ? "" : part._bytes;
    }
    LlvmNumbers head(target._isBigEndian);
    head.text("\x7f"
              "ELF")
        .fixed(target._is64 ? 2 : 1, 1)
        .fixed(target._isBigEndian ? 2 : 1, 1);
    head.fixed(1, 1).text(std::string(9, '\0')).u16(type).u16(62).u32(1);
    head.fixed(0, word).fixed(0, word).fixed(headSize + contents.size(), word).u32(0);
    head.u16(headSize).u16(0).u16(0).u16(target._is64 ? 64 : 40);
    head.u16(all.size() + 1).u16(all.size());
    return head.bytes() + contents + table.bytes();
}

namespace {

std::string fileList(const LlvmTarget& target, const std::vector<std::string>& files)
{
    LlvmNumbers names;
    for (const std::string& file : files) {
        names.leb(file.size()).text(file);
    }
    return LlvmNumbers().leb(files.size()).text(llvmText(names.bytes(), target._isPacked)).bytes();
}

uint64_t hashOf(const std::string& bytes)
{
    return md5Low(bytes.data(), bytes.size());
}

} // namespace

std::string mapSection(const LlvmTarget& target, const std::vector<std::string>& files)
{
    const std::string list = fileList(target, files);
    LlvmNumbers bytes(target._isBigEndian);
    bytes.u32(0).u32(list.size()).u32(0).u32(target._mapVersion).text(list);
    return bytes.align(8).bytes();
}

std::string recordSection(const LlvmTarget& target, const std::vector<std::string>& files,
                          const std::vector<LlvmFunction>& functions)
{
    LlvmNumbers bytes(target._isBigEndian);
    for (const LlvmFunction& function : functions) {
        bytes.align(8).u64(hashOf(function._name)).u32(function._mapping.size());
        bytes.u64(function._hash).u64(hashOf(fileList(target, files))).text(function._mapping);
    }
    return bytes.bytes();
}

std::string nameSection(const LlvmTarget& target, const std::vector<LlvmFunction>& functions)
{
    std::string names;
    for (const LlvmFunction& function : functions) {
        names += (names.empty() ? "" : "\x01") + function._name;
    }
    return llvmText(names, target._isPacked);
}

std::string llvmProgram(const LlvmTarget& target, const std::vector<std::string>& files,
                        const std::vector<LlvmFunction>& functions)
{
    std::vector<ElfPart> parts = {
        {"__llvm_prf_names", nameSection(target, functions)},
        {"__llvm_covmap", mapSection(target, files)},
        {"__llvm_covfun", recordSection(target, files, functions)},
    };
    if (!target._buildId.empty()) {
        LlvmNumbers note(target._isBigEndian);
        note.u32(4).u32(target._buildId.size()).u32(3).text(std::string("GNU\0", 4));
        parts.push_back({".note.gnu.build-id", note.text(target._buildId).align(4).bytes(), 7});
    }
    return elfFile(target, parts);
}

std::string rawProfile(const LlvmTarget& target, const std::vector<LlvmFunction>& functions)
{
    const uint32_t version = target._rawVersion;
    const size_t word = target._is64 ? 8 : 4;
    const size_t recordSize = version < 9 ? (target._is64 ? 48 : 40) : (target._is64 ? 64 : 48);
    const uint64_t start = version < 8 ? 0x5000 : 0u - uint64_t(0x180); // of the counters
    LlvmNumbers data(target._isBigEndian);
    LlvmNumbers counters(target._isBigEndian);
    LlvmNumbers values(target._isBigEndian);
    size_t nCounters = 0;
    for (const LlvmFunction& function : functions) {
        if (function._counters.empty()) {
            continue;
        }
        const size_t at = data.bytes().size();
        uint64_t address = start + counters.bytes().size();
        address -= version < 8 ? 0 : at;
        data.u64(hashOf(function._name)).u64(function._hash).fixed(address, word);
        data.fixed(0, version < 9 ? 2 * word : 3 * word).u32(function._counters.size());
        data.u16(function._valueSites).u16(0).fixed(0, version < 10 ? 0 : 2);
        data.text(std::string(at + recordSize - data.bytes().size(), '\0'));
        for (const uint64_t counter : function._counters) {
            counters.fixed(target._isSingleByte ? (counter == 0 ? 255 : 0) : counter,
                           target._isSingleByte ? 1 : 8);
            ++nCounters;
        }
        if (function._valueSites != 0) {
            values.u32(16).u32(1).u64(0x0102030405060708);
        }
    }
    const std::string names = nameSection(target, functions);
    LlvmNumbers ids(target._isBigEndian);
    if (version >= 7 && !target._buildId.empty()) {
        ids.u64(target._buildId.size()).text(target._buildId);
        ids.align(version == 7 ? 1 : 8);
    }
    LlvmNumbers head(target._isBigEndian);
    head.u64(target._is64 ? 0xff6c70726f667281 : 0xff6c70726f665281);
    head.u64(version | (target._isSingleByte ? uint64_t(1) << 60 : 0));
    if (version >= 7) {
        head.u64(ids.bytes().size());
    }
    const size_t padding = (8 - counters.bytes().size() % 8) % 8;
    head.u64(data.bytes().size() / recordSize).u64(0).u64(nCounters).u64(padding);
    if (version >= 9) {
        head.u64(3).u64(5);
    }
    head.u64(names.size()).u64(start);
    if (version >= 9) {
        head.u64(0);
    }
    head.u64(0x7777);
    if (version >= 10) {
        head.u64(1).u64(3);
    }
    head.u64(version >= 10 ? 2 : 1);
    head.text(ids.bytes()).text(data.bytes()).text(counters.bytes());
    head.text(std::string(padding, '\0'));
    if (version >= 9) {
        head.text("abc").text(std::string(5, '\0'));
    }
    head.text(names).text(std::string((8 - names.size() % 8) % 8, '\0'));
    if (version >= 10) {
        head.text(std::string(target._is64 ? 24 : 16, 'v')).text("tab").text(std::string(5, '\0'));
    }
    return head.text(values.bytes()).bytes();
}
