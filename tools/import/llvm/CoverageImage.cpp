// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CoverageImage.h"

#include "tools/import/llvm/CoverageFunction.h"

namespace {

constexpr size_t RecordUnit = 8;

const char mapSection[] = "__llvm_covmap";
const char recordSection[] = "__llvm_covfun";
const char nameSection[] = "__llvm_prf_names";
const char countersSection[] = "__llvm_prf_cnts";
// What a program has that leaves them out of its profiles.
const char leftOutData[] = "__llvm_covdata";
const char leftOutNames[] = "__llvm_covnames";

} // namespace

CoverageImage::Result CoverageImage::fail(const std::string& problem)
{
    _problem = problem;
    return Failed;
}

CoverageImage::Result CoverageImage::read(const std::string& path)
{
    _path = path;
    ElfFile file;
    if (!file.open(path)) {
        return fail(file.problem());
    }
    const Result result = read(file);
    return result != Failed && !file.isUnchanged() ? fail(file.problem()) : result;
}

CoverageImage::Result CoverageImage::read(ElfFile& file)
{
    const ElfSection* counters = file.find(countersSection);
    if (file.find(mapSection) == nullptr) {
        return counters == nullptr && file.find(nameSection) == nullptr ? NoCoverage : Stripped;
    }
    _isObject = file.isObject();
    _countersAddress = counters == nullptr ? 0 : counters->_address;
    return readMap(file);
}

CoverageImage::Result CoverageImage::readMap(ElfFile& file)
{
    std::string lists;
    std::string names;
    if (!file.read(mapSection, RecordUnit, lists) ||
        !file.read(recordSection, RecordUnit, _recordBytes) || !file.read(nameSection, 1, names) ||
        !file.read(leftOutNames, 1, names) || !file.read(leftOutData, RecordUnit, _profileData)) {
        return fail(file.problem());
    }
    _buildId = file.buildId();
    switch (_lists.read(lists, file.isBigEndian())) {
    case FileLists::UnknownVersion:
        return UnknownVersion;
    case FileLists::Damaged:
        return fail("its lists of source files are damaged: link it again");
    case FileLists::Ok:
        break;
    }
    if (!_names.add(names)) {
        return fail("its names of functions are damaged: link it again");
    }
    return readRecords(file.isBigEndian())
               ? Ok
               : fail("its records of functions are damaged: link it again");
}

bool CoverageImage::readRecords(bool isBigEndian)
{
    LlvmBytes bytes(_recordBytes, isBigEndian);
    CoverageFunction function;
    while (bytes.left() > 0) {
        CoverageRecord record;
        record._name = bytes.u64();
        record._size = bytes.u32();
        record._hash = bytes.u64();
        record._list = bytes.u64();
        record._mapping = bytes.take(record._size);
        if (bytes.failed()) {
            return false;
        }
        // A dummy's mapping is short; most others need not be read here.
        if (record._hash == 0 && record._size < 64) {
            const std::vector<std::string>* files = _lists.find(record._list);
            record._isDummy = files != nullptr &&
                              function.read(record._mapping, record._size, files->size()) &&
                              function.isDummy();
        }
        addRecord(record);
        bytes.align(RecordUnit);
    }
    return true;
}

void CoverageImage::forget()
{
    std::string().swap(_recordBytes);
    _mappings.clear();
    _names.forget();
    std::vector<CoverageRecord>().swap(_records);
    _byName.clear();
}

void CoverageImage::addFunction(const std::string& name, uint64_t hash,
                                const std::vector<std::string>& files, const std::string& mapping)
{
    _mappings.push_back(mapping);
    CoverageRecord record;
    record._name = _names.addName(name);
    record._hash = hash;
    record._list = _lists.addList(files);
    record._mapping = _mappings.back().data();
    record._size = static_cast<uint32_t>(mapping.size());
    _records.push_back(record);
}

void CoverageImage::addRecord(const CoverageRecord& record)
{
    const auto found = _byName.emplace(record._name, _records.size());
    if (found.second) {
        _records.push_back(record);
        return;
    }
    CoverageRecord& before = _records[found.first->second];
    if (before._isDummy && !record._isDummy) {
        before = record;
    }
}
