// SPDX-License-Identifier: MIT
#include "tools/import/llvm/FileLists.h"

#include "tools/common/SourcePath.h"
#include "tools/import/llvm/LlvmBytes.h"
#include "tools/import/llvm/md5Low.h"

namespace {

constexpr uint32_t FirstWithFolder = 5;

// What names may need, unpacked, for each byte of the section; beyond that a few bytes could ask
// for any memory.
constexpr uint64_t FirstBytes = 4u << 20;
constexpr uint64_t BytesForEach = 32;

// Relative names count from the folder that stands first.
void resolve(std::vector<std::string>& names)
{
    const std::string folder = names.front();
    for (size_t i = 1; i < names.size(); ++i) {
        if (!folder.empty() && !names[i].empty() && names[i][0] != '/') {
            names[i] = folder[0] == '/' ? absolutePath(folder, names[i]) : folder + "/" + names[i];
        }
    }
}

} // namespace

bool FileLists::readList(const char* bytes, size_t size, uint32_t version)
{
    LlvmBytes list(bytes, size);
    const uint64_t count = list.leb();
    std::string text;
    if (count == 0 || !_reader.read(list, text) || count > text.size()) {
        return false;
    }
    std::vector<std::string> names;
    LlvmBytes items(text);
    for (uint64_t i = 0; i < count; ++i) {
        const size_t length = items.lebCount();
        const char* name = items.take(length);
        if (items.failed() || (length == 0 && i > 0)) {
            return false; // only the folder may be empty
        }
        names.emplace_back(name, length);
    }
    if (version >= FirstWithFolder) {
        resolve(names);
    }
    const auto found = _lists.emplace(md5Low(bytes, size), names);
    if (!found.second && found.first->second != names) {
        found.first->second.clear();
    }
    return true;
}

FileLists::Result FileLists::read(const std::string& bytes, bool isBigEndian)
{
    LlvmBytes section(bytes, isBigEndian);
    _reader.allow(FirstBytes + BytesForEach * bytes.size());
    while (section.left() > 0) {
        const uint32_t records = section.u32();
        const uint32_t size = section.u32();
        const uint32_t mapping = section.u32();
        const uint32_t version = section.u32();
        if (section.failed()) {
            return Damaged;
        }
        _version = version;
        if (version < FirstVersion || version > LastVersion) {
            return UnknownVersion;
        }
        const char* list = section.take(size);
        if (records != 0 || mapping != 0 || list == nullptr || !readList(list, size, version)) {
            return Damaged;
        }
        section.align(8);
    }
    return Ok;
}

uint64_t FileLists::addList(const std::vector<std::string>& files)
{
    std::string text;
    for (const std::string& file : files) {
        text += file;
        text += '\0';
    }
    const uint64_t hash = md5Low(text.data(), text.size());
    _lists.emplace(hash, files);
    return hash;
}

const std::vector<std::string>* FileLists::find(uint64_t hash) const
{
    const auto found = _lists.find(hash);
    return found == _lists.end() || found->second.empty() ? nullptr : &found->second;
}
