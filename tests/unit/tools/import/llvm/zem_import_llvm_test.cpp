// SPDX-License-Identifier: MIT
//
// The whole way on a real build: tests/data/llvm-samples is built with each clang++ that is
// installed, run twice, and what the importer reads is compared with what its llvm-cov says: each
// region of each function, and each line as zem-report has it.
#include "tests/support/TempDir.h"
#include "tools/import/llvm/CoverageImage.h"
#include "tools/import/llvm/LlvmExport.h"
#include "tools/import/llvm/RunCounters.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

// Function and files > regions with their counts.
using Regions = std::multimap<std::string, std::string>;

std::string textOf(const CoverageRegion& region, uint64_t count)
{
    std::ostringstream text;
    text << region._kind << ' ' << region._startLine << ':' << region._startColumn << '-'
         << region._endLine << ':' << region._endColumn << " file " << region._file << " = "
         << count << '\n';
    return text.str();
}

class ExportedRegions : public LlvmExport::Receiver
{
public:
    bool function(ExportedFunction& function) override
    {
        std::string key = function._name;
        for (const std::string& file : function._files) {
            key += "\n" + file;
        }
        std::string text;
        for (size_t i = 0; i < function._regions.size(); ++i) {
            text += textOf(function._regions[i], function._counts[i]);
        }
        _regions.emplace(key, text);
        return true;
    }
    Regions _regions;
};

// One function of a program, and its counts by a profile.
void addRegions(const CoverageImage& image, const CoverageRecord& record, const RawProfile& profile,
                Regions& result)
{
    const std::vector<std::string>& files = *image.files(record._list);
    CoverageFunction function;
    ASSERT_TRUE(function.read(record._mapping, record._size, files.size()));
    std::vector<uint32_t> counters;
    for (const CoverageRegion& region : function._regions) {
        counters.push_back(region._kind == CoverageRegion::Skipped ? 0 : region._counter);
    }
    CountPlan::Function made;
    made._name = record._name;
    made._hash = record._hash;
    ASSERT_TRUE(CountPlan::make(function, counters, made));
    CountPlan plan;
    (void)plan.add(made);
    RunCounters run(plan);
    RunCounters::Found found;
    for (size_t i = 0; i < profile.parts().size(); ++i) {
        run.add(profile.parts()[i], i, found);
    }
    std::vector<int64_t> counts;
    EXPECT_EQ(run.evaluate(counts, 1), 0u);
    std::string key(image.name(record._name));
    for (const uint32_t file : function._files) {
        key += "\n" + files[file];
    }
    std::string text;
    for (size_t i = 0; i < function._regions.size(); ++i) {
        if (function._regions[i]._kind <= CoverageRegion::Gap) {
            text += textOf(function._regions[i], static_cast<uint64_t>(counts[i]));
        }
    }
    result.emplace(key, text);
}

// File > line > count of a tracefile; the greatest where it has several.
using Lines = std::map<std::string, std::map<unsigned long, unsigned long>>;

Lines linesOf(const std::string& tracefile)
{
    Lines result;
    std::istringstream text(tracefile);
    std::string file;
    for (std::string line; std::getline(text, line);) {
        if (line.compare(0, 3, "SF:") == 0) {
            file = line.substr(3);
        } else if (line.compare(0, 3, "DA:") == 0) {
            char* behind = nullptr;
            const unsigned long number = std::strtoul(line.c_str() + 3, &behind, 10);
            unsigned long& count = result[file][number];
            count = std::max(count, std::strtoul(behind + 1, nullptr, 10));
        }
    }
    return result;
}

// The lines of a file that define macros, and the one behind its last.
std::set<unsigned long> linesOfMacros(const std::string& path)
{
    std::set<unsigned long> result;
    std::ifstream file(path);
    unsigned long number = 0;
    bool isMacro = false;
    for (std::string line; std::getline(file, line);) {
        ++number;
        isMacro = isMacro || line.compare(0, 7, "#define") == 0;
        if (isMacro) {
            result.insert(number);
        }
        isMacro = isMacro && !line.empty() && line.back() == '\\';
    }
    result.insert(number + 1);
    return result;
}

class ZemImportLlvmTest : public ::testing::Test
{
protected:
    // Runs a shell command in the test's folder. Returns what it prints, errors too.
    std::string run(const std::string& command, int expected = 0)
    {
        const std::string line = "cd '" + _dir.path() + "' && { " + command + "; } >out 2>err";
        const int status = std::system(line.c_str());
        EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, expected)
            << command << "\n"
            << TempDir::read(_dir.path("err"));
        return TempDir::read(_dir.path("out"));
    }

    bool isInstalled(const std::string& program) const
    {
        return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
    }

    void build(const std::string& version, const std::string& more = "")
    {
        run("rm -rf build && mkdir build");
        run("C='clang++" + version + " -fprofile-instr-generate -fcoverage-mapping -w " + more +
            "' && $C -fPIC -shared src/library.cpp -o build/libwork.so && "
            "$C src/main.cpp src/other.cpp -o build/program -Lbuild -lwork -Wl,-rpath,.");
        run("cd build && LLVM_PROFILE_FILE=one.profraw ./program");
        run("cd build && LLVM_PROFILE_FILE=two%p.profraw ./program 7 b c && "
            "mv two*.profraw two.profraw");
    }

    Regions ownRegions(const std::string& profilePath)
    {
        const std::string bytes = TempDir::read(profilePath);
        RawProfile profile;
        EXPECT_EQ(profile.read(bytes, {}), RawProfile::Ok);
        Regions result;
        for (const char* name : {"program", "libwork.so"}) {
            CoverageImage image;
            EXPECT_EQ(image.read(_dir.path("build/") + name), CoverageImage::Ok) << image.problem();
            for (const CoverageRecord& record : image.records()) {
                Regions one;
                addRegions(image, record, profile, one);
                // llvm-cov shows a function of several files once, and no dummy of one that ran.
                if (!one.empty() && result.count(one.begin()->first) == 0) {
                    result.insert(one.begin(), one.end());
                }
            }
        }
        return result;
    }

    void compareRegions(const std::string& tools, const std::string& name)
    {
        run("cd build && llvm-profdata" + tools + " merge " + name + ".profraw -o " + name +
            ".profdata");
        const std::string json = run("cd build && llvm-cov" + tools +
                                     " export program -object libwork.so "
                                     "-instr-profile " +
                                     name + ".profdata");
        ExportedRegions theirs;
        LlvmExport document(theirs);
        ASSERT_TRUE(document.receive(json.data(), json.size()) && document.isWhole());
        const Regions ours = ownRegions(_dir.path("build/" + name + ".profraw"));
        EXPECT_GT(ours.size(), 25u);
        for (const auto& function : theirs._regions) {
            const auto found = ours.find(function.first);
            ASSERT_NE(found, ours.end()) << function.first;
            EXPECT_EQ(found->second, function.second) << function.first;
        }
        EXPECT_EQ(ours.size(), theirs._regions.size());
    }

    // A line is red exactly when llvm-cov says that it did not run.
    void compareLines(const std::string& tools, const std::string& name, const std::string& how)
    {
        const Lines theirs = linesOf(run("cd build && llvm-cov" + tools +
                                         " export -format=lcov program "
                                         "-object libwork.so -instr-profile " +
                                         name + ".profdata"));
        run("cd build && '" ZEM_BINARY_DIR "/bin/zem-import' llvm -o out --name " + name + " " +
            how + " program libwork.so " + name + ".profraw");
        Lines ours = linesOf(
            run("'" ZEM_BINARY_DIR "/bin/zem-report' --format lcov build/out/" + name + ".log"));
        size_t compared = 0;
        for (const auto& file : theirs) {
            const std::set<unsigned long> macros = linesOfMacros(file.first);
            const auto& own = ours[file.first];
            for (const auto& line : file.second) {
                const auto found = own.find(line.first);
                const std::string place =
                    tools + " " + file.first + ":" + std::to_string(line.first);
                if (macros.count(line.first) != 0) {
                    continue;
                }
                ASSERT_NE(found, own.end()) << place;
                EXPECT_EQ(found->second != 0, line.second != 0) << place;
                ++compared;
            }
        }
        EXPECT_GT(compared, 130u);
    }

    void SetUp() override
    {
        fs::copy(ZEM_SOURCE_DIR "/tests/data/llvm-samples/shapes", _dir.path("src"));
    }

    const TempDir _dir;
};

// All compilers in one test: each case is a process of its own.
TEST_F(ZemImportLlvmTest, AgreesWithEachLlvmCovThatIsInstalled)
{
    ASSERT_TRUE(isInstalled("clang++") && isInstalled("llvm-cov"));
    for (const char* version : {"", "-13", "-15", "-16", "-17", "-18", "-19", "-20", "-22"}) {
        if (!isInstalled(std::string("clang++") + version) ||
            !isInstalled(std::string("llvm-profdata") + version)) {
            continue;
        }
        build(version);
        compareRegions(version, "one");
        compareLines(version, "one", "");
        if (std::string(version) != "-13") { // which cannot read two profiles in one file
            compareRegions(version, "two");
            compareLines(version, "two", "");
        }
        if (version[0] == '\0') {
            compareLines(version, "one", "--via-llvm-cov");
            build(version, "-O2 -fuse-ld=lld -Wl,--gc-sections");
            compareRegions(version, "one");
        }
    }
}

} // namespace
