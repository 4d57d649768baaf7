// SPDX-License-Identifier: MIT
#include "tools/import/llvm/ElfFile.h"

#include "tools/import/llvm/LlvmBytes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t HeadSize = 64;
constexpr uint32_t NoteType = 7;
constexpr uint32_t NoBytesType = 8;
constexpr uint64_t CompressedFlag = 0x800;
constexpr uint32_t BuildIdNote = 3;

bool startsWith(const char* text, const char* start)
{
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

} // namespace

bool ElfFile::isElf(const char* bytes, size_t size)
{
    return size >= MagicSize && std::memcmp(bytes,
                                            "\x7f"
                                            "ELF",
                                            MagicSize) == 0;
}

bool ElfFile::fail(const std::string& problem)
{
    _problem = problem;
    return false;
}

bool ElfFile::open(const std::string& path)
{
    return (_file.openToWatch(path) || fail(_file.problem())) && readTable();
}

bool ElfFile::readHead(uint64_t& table, uint64_t& entries, uint64_t& names)
{
    std::string head;
    if (!_file.readAt(0, HeadSize, head)) {
        return fail(_file.problem());
    }
    if (!isElf(head.data(), head.size())) {
        return fail("it is no ELF file");
    }
    if (head.size() < HeadSize || head[4] < 1 || head[4] > 2 || head[5] < 1 || head[5] > 2) {
        return fail("its ELF header is damaged");
    }
    _is64 = head[4] == 2;
    _isBigEndian = head[5] == 2;
    LlvmBytes bytes(head, _isBigEndian);
    bytes.moveTo(16);
    _isObject = bytes.u16() == 1;
    bytes.moveTo(_is64 ? 40 : 32);
    table = bytes.fixed(_is64 ? 8 : 4);
    bytes.moveTo(_is64 ? 58 : 46);
    const size_t size = bytes.u16();
    entries = bytes.u16();
    names = bytes.u16();
    return table == 0 || size == entrySize() || fail("its section table is damaged");
}

ElfSection ElfFile::readEntry(const char* entry, uint32_t& name, uint32_t& link) const
{
    const size_t word = _is64 ? 8 : 4;
    LlvmBytes bytes(entry, entrySize(), _isBigEndian);
    ElfSection section;
    name = bytes.u32();
    section._type = bytes.u32();
    section._flags = bytes.fixed(word);
    section._address = bytes.fixed(word);
    section._offset = bytes.fixed(word);
    section._size = bytes.fixed(word);
    link = bytes.u32();
    return section;
}

bool ElfFile::readTable()
{
    uint64_t start = 0;
    uint64_t entries = 0;
    uint64_t names = 0;
    if (!readHead(start, entries, names)) {
        return false;
    }
    if (start == 0) {
        return true; // stripped of its sections
    }
    const char damaged[] = "its section table does not lie in the file; is it cut short?";
    std::string first;
    if (start > _file.size() || !_file.readAt(start, entrySize(), first) ||
        first.size() != entrySize()) {
        return fail(damaged);
    }
    uint32_t name = 0;
    uint32_t link = 0;
    const ElfSection zero = readEntry(first.data(), name, link);
    entries = entries == 0 ? zero._size : entries;
    names = names == 0xffff ? link : names;
    if (entries > (_file.size() - start) / entrySize() || names >= entries) {
        return fail(damaged);
    }
    std::string table;
    std::string texts;
    if (!_file.readAt(start, static_cast<size_t>(entries) * entrySize(), table)) {
        return fail(_file.problem());
    }
    if (!readBytes(readEntry(&table[static_cast<size_t>(names) * entrySize()], name, link),
                   texts)) {
        return false;
    }
    for (size_t i = 0; i < entries; ++i) {
        ElfSection section = readEntry(&table[i * entrySize()], name, link);
        if (name >= texts.size()) {
            continue;
        }
        const char* text = texts.c_str() + name;
        if (section._type == NoteType || startsWith(text, "__llvm_")) {
            section._name.assign(text, strnlen(text, 64));
            _sections.push_back(std::move(section));
        }
    }
    return true;
}

const ElfSection* ElfFile::find(const char* name) const
{
    const auto found = std::find_if(_sections.begin(), _sections.end(),
                                    [name](const ElfSection& one) { return one._name == name; });
    return found == _sections.end() ? nullptr : &*found;
}

bool ElfFile::readBytes(const ElfSection& section, std::string& bytes)
{
    if (section._type == NoBytesType) {
        return true;
    }
    if ((section._flags & CompressedFlag) != 0) {
        return fail("its section " + section._name +
                    " is compressed; link it without "
                    "--compress-debug-sections");
    }
    if (section._offset > _file.size() || section._size > _file.size() - section._offset) {
        return fail("its section " + section._name + " does not lie in the file; is it cut short?");
    }
    return _file.readAt(section._offset, static_cast<size_t>(section._size), bytes) ||
           fail(_file.problem());
}

bool ElfFile::read(const char* name, size_t unit, std::string& bytes)
{
    const size_t before = bytes.size();
    for (const ElfSection& section : _sections) {
        if (section._name != name) {
            continue;
        }
        bytes.resize(before + (bytes.size() - before + unit - 1) / unit * unit);
        // Sections of a sound file do not overlap.
        if (section._type != NoBytesType &&
            section._size > _file.size() + unit * _sections.size() - (bytes.size() - before)) {
            return fail("its sections overlap: it is damaged");
        }
        if (!readBytes(section, bytes)) {
            return false;
        }
    }
    return true;
}

std::string ElfFile::buildId()
{
    for (const ElfSection& section : _sections) {
        std::string note;
        if (section._type != NoteType || section._size > 4096 || !readBytes(section, note)) {
            continue;
        }
        LlvmBytes bytes(note, _isBigEndian);
        while (bytes.left() >= 12) {
            const uint32_t ownerSize = bytes.u32();
            const uint32_t size = bytes.u32();
            const uint32_t type = bytes.u32();
            const char* owner = bytes.take(ownerSize);
            bytes.align(4);
            const char* content = bytes.take(size);
            bytes.align(4);
            if (content != nullptr && owner != nullptr && type == BuildIdNote && ownerSize == 4 &&
                std::memcmp(owner, "GNU", 4) == 0) {
                return std::string(content, size);
            }
        }
    }
    return std::string();
}

bool ElfFile::isUnchanged()
{
    return _file.isUnchanged() || fail(_file.problem());
}
