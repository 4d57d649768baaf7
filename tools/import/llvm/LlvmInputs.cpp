// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmInputs.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/FolderWalk.h"
#include "tools/common/InputFile.h"
#include "tools/import/isBuildProbe.h"
#include "tools/import/llvm/ElfFile.h"
#include "tools/import/llvm/RawProfile.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <sys/stat.h>

namespace {

constexpr size_t HeadSize = 64;     // bytes
constexpr size_t ElfTypePlace = 16; // a word of two bytes, in the order that byte 5 says
constexpr unsigned char ElfObject = 1;

const char archiveMagic[] = "!<arch>\n";

void complain(const std::string& path, const std::string& problem)
{
    std::cerr << "zem-import: " << qipVisibleText(path.c_str()) << ": "
              << qipVisibleText(problem.c_str()) << '\n';
}

// Whether a path has something before such an end.
bool endsWith(const std::string& path, const std::string& end)
{
    return path.size() > end.size() &&
           path.compare(path.size() - end.size(), std::string::npos, end) == 0;
}

bool isObject(const std::string& head)
{
    return head.size() == HeadSize && (head[ElfTypePlace] | head[ElfTypePlace + 1]) == ElfObject &&
           (head[ElfTypePlace] == 0 || head[ElfTypePlace + 1] == 0);
}

} // namespace

LlvmInputs::Kind LlvmInputs::kindOf(const std::string& path)
{
    std::string ignored;
    return kindOf(path, ignored);
}

LlvmInputs::Kind LlvmInputs::kindOf(const std::string& path, std::string& problem)
{
    InputFile file;
    std::string head;
    if (!file.open(path) || !file.append(head, HeadSize)) {
        problem = file.problem();
        return Nothing;
    }
    if (ElfFile::isElf(head.data(), head.size())) {
        return isObject(head) ? Object : Elf;
    }
    return RawProfile::isRaw(head.data(), head.size())       ? Raw
           : RawProfile::isIndexed(head.data(), head.size()) ? Indexed
                                                             : Other;
}

bool LlvmInputs::isFolder(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool LlvmInputs::hasProfileName(const std::string& path)
{
    return endsWith(path, ".profraw");
}

bool LlvmInputs::hasTextName(const std::string& path)
{
    return endsWith(path, ".proftext");
}

bool LlvmInputs::isNew(const std::string& path)
{
    std::error_code failure;
    const std::filesystem::path whole = std::filesystem::canonical(path, failure);
    return _known.insert(failure ? path : whole.string()).second;
}

bool LlvmInputs::add(const std::string& word)
{
    if (isFolder(word)) {
        return addFolder(word);
    }
    InputFile file;
    std::string head;
    if (!file.open(word) || !file.append(head, HeadSize)) {
        complain(word, file.problem());
        return false;
    }
    if (!isNew(word)) {
        return true;
    }
    if (ElfFile::isElf(head.data(), head.size())) {
        _binaries.push_back({word, true});
    } else if (head.compare(0, sizeof(archiveMagic) - 1, archiveMagic) == 0) {
        complain(word, "is an archive of objects: name the program that was linked with it");
        return false;
    } else {
        _profiles.push_back(word);
    }
    return true;
}

bool LlvmInputs::addFolder(const std::string& folder)
{
    FolderWalk walk(folder);
    std::vector<std::string> profiles;
    std::vector<Binary> binaries;
    std::vector<Binary> objects;
    while (walk.next()) {
        const bool isProfile = hasProfileName(walk.path());
        if (!walk.isFile(isProfile ? FolderWalk::Sought::ByName : FolderWalk::Sought::ByContent) ||
            isBuildProbe(walk.path())) {
            continue;
        }
        if (isProfile) {
            profiles.push_back(walk.path());
            continue;
        }
        std::string problem;
        const Kind kind = kindOf(walk.path(), problem);
        if (kind == Nothing) { // it may have been a program
            _problems.addUnread(walk.path(), problem);
        } else if (kind == Elf || kind == Object) {
            (kind == Elf ? binaries : objects).push_back({walk.path(), false});
        }
    }
    const bool isRead = _problems.add(walk, folder);
    const auto byPath = [](const Binary& a, const Binary& b) {
        return a._path < b._path;
    };
    std::sort(profiles.begin(), profiles.end());
    std::sort(binaries.begin(), binaries.end(), byPath);
    std::sort(objects.begin(), objects.end(), byPath);
    for (const std::string& profile : profiles) {
        if (isNew(profile)) {
            _profiles.push_back(profile);
        }
    }
    for (const Binary& binary : binaries) {
        if (isNew(binary._path)) {
            _binaries.push_back(binary);
        }
    }
    for (const Binary& object : objects) {
        if (isNew(object._path)) {
            _objects.push_back(object);
        }
    }
    return isRead;
}
