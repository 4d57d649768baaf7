// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmCov.h"

#include "tools/common/InputFile.h"
#include "tools/import/TemporaryFolder.h"
#include "tools/import/ToolRun.h"
#include "tools/import/llvm/RawProfile.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr unsigned int OldestTool = 11;
constexpr unsigned int NewestTool = 40;

class Nobody : public ToolRun::Receiver
{
public:
    bool receive(const char* /*bytes*/, size_t /*size*/) override { return true; }
};

bool isInstalled(const std::string& program)
{
    if (program.find('/') != std::string::npos) {
        return access(program.c_str(), X_OK) == 0;
    }
    const char* path = std::getenv("PATH");
    std::string folders = path == nullptr ? "/usr/bin:/bin" : path;
    folders += ':';
    for (size_t start = 0; start < folders.size();) {
        const size_t end = folders.find(':', start);
        if (access((folders.substr(start, end - start) + "/" + program).c_str(), X_OK) == 0) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

// Those of a range of versions that are installed, the newest first, then the one without a number.
std::vector<std::string> installed(const char* program, unsigned int oldest, unsigned int newest)
{
    std::vector<std::string> result;
    for (unsigned int version = newest; version >= oldest; --version) {
        result.push_back(std::string(program) + "-" + std::to_string(version));
    }
    result.emplace_back(program);
    std::vector<std::string> there;
    for (const std::string& name : result) {
        if (isInstalled(name)) {
            there.push_back(name);
        }
    }
    return there;
}

uint32_t rawVersionOf(const std::string& path)
{
    InputFile file;
    std::string head;
    return file.open(path) && file.append(head, RawProfile::HeadSize)
               ? RawProfile::versionOf(head.data(), head.size())
               : 0;
}

// An llvm-profdata reads the raw profiles of its own version alone.
std::vector<std::string> profdataFor(uint32_t rawVersion)
{
    switch (rawVersion) {
    case 5:
        return installed("llvm-profdata", 11, 12);
    case 7:
        return installed("llvm-profdata", 13, 13);
    case 8:
        return installed("llvm-profdata", 14, 17);
    case 9:
        return installed("llvm-profdata", 18, 18);
    case 10:
        return installed("llvm-profdata", 19, 22);
    default:
        return installed("llvm-profdata", OldestTool, NewestTool);
    }
}

// Runs the first of `programs` that succeeds.
bool runFirst(const std::vector<std::string>& programs, const std::vector<std::string>& words,
              std::string& complaint)
{
    for (const std::string& program : programs) {
        std::vector<std::string> all{program};
        all.insert(all.end(), words.begin(), words.end());
        Nobody nobody;
        ToolRun tool;
        if (tool.run(all, nobody) == ToolRun::Ok) {
            return true;
        }
        complaint = program + ": " + tool.complaint();
    }
    return false;
}

// Tells whether any function came, for then no other tool can be asked any more.
class CountingReceiver : public LlvmExport::Receiver
{
public:
    explicit CountingReceiver(LlvmExport::Receiver& other) : _other(other) {}
    bool function(ExportedFunction& function) override
    {
        _isAny = true;
        return _other.function(function);
    }
    bool isAny() const { return _isAny; }

private:
    LlvmExport::Receiver& _other;
    bool _isAny = false;
};

} // namespace

bool LlvmCov::index(const std::vector<std::string>& profiles, const std::string& result)
{
    const std::vector<std::string> programs = _profdata != nullptr
                                                  ? std::vector<std::string>{_profdata}
                                                  : profdataFor(rawVersionOf(profiles.front()));
    std::vector<std::string> words{"merge", "-o", result};
    words.insert(words.end(), profiles.begin(), profiles.end());
    std::string complaint = "no llvm-profdata of its version is installed";
    if (runFirst(programs, words, complaint)) {
        return true;
    }
    _problem = complaint + "; install the llvm-profdata of the compiler that built the program, or "
                           "name it with --llvm-profdata";
    return false;
}

bool LlvmCov::read(const std::vector<std::string>& binaries,
                   const std::vector<std::string>& profiles, LlvmExport::Receiver& receiver)
{
    const TemporaryFolder folder;
    if (folder.path().empty()) {
        _problem = folder.problem();
        return false;
    }
    const std::string indexed = folder.path() + "/sum.profdata";
    if (!index(profiles, indexed)) {
        return false;
    }
    std::vector<std::string> words{"",
                                   "export",
                                   "-format=text",
                                   "-skip-expansions",
                                   "-instr-profile=" + indexed,
                                   binaries.front()};
    for (size_t i = 1; i < binaries.size(); ++i) {
        words.emplace_back("-object");
        words.push_back(binaries[i]);
    }
    const std::vector<std::string> programs = _cov != nullptr
                                                  ? std::vector<std::string>{_cov}
                                                  : installed("llvm-cov", OldestTool, NewestTool);
    std::string complaint = "no llvm-cov is installed";
    for (const std::string& program : programs) {
        words.front() = program;
        CountingReceiver counting(receiver);
        LlvmExport document(counting);
        ToolRun tool;
        if (tool.run(words, document) == ToolRun::Ok && document.isWhole()) {
            return true;
        }
        complaint = program + ": " +
                    (tool.complaint().empty() ? "writes what cannot be read" : tool.complaint());
        if (counting.isAny()) {
            break;
        }
    }
    _problem = complaint + "; install the llvm-cov of the compiler that built the program, or name "
                           "it with --llvm-cov";
    return false;
}
