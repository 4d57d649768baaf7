// SPDX-License-Identifier: MIT
//
// Each program of tests/data/gcc-samples is built, run and imported, and what the viewer draws is
// compared with gcov and with the comments in the source: "//= run" for a line that must not be
// red, "//= red" for one that must be, "//= part" for one that ran in part, and a number for one
// that ran that often. The file "known" of a sample lists the classes of disagreement with gcov
// that remain there, each with its reason.
#include "qip/Support/ListIterator.h"
#include "tests/support/TempDir.h"
#include "tools/compare/DrawnFile.h"
#include "zem/Repository/ZEMRepository.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

const char samplesFolder[] = ZEM_SOURCE_DIR "/tests/data/gcc-samples";
const char mark[] = "//= ";

// What a mark in `text` asks for; empty without one.
std::string markOf(const std::string& text)
{
    const size_t at = text.find(mark);
    return at == std::string::npos ? std::string() : text.substr(at + sizeof(mark) - 1);
}

size_t marksIn(const std::string& path)
{
    std::ifstream file(path);
    size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        count += markOf(line).empty() ? 0 : 1;
    }
    return count;
}

// A sample and the compiler that builds it.
struct Case
{
    std::string _sample;
    std::string _version; // what stands behind "g++", "gcc" and "gcov"
};

void PrintTo(const Case& which, std::ostream* out)
{
    *out << which._sample << " with g++" << which._version;
}

bool isInstalled(const std::string& program)
{
    return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

std::vector<Case> cases()
{
    std::vector<Case> result;
    for (const char* version : {"", "-14"}) {
        for (const auto& entry : fs::directory_iterator(samplesFolder)) {
            if (isInstalled(std::string("g++") + version)) {
                result.push_back({entry.path().filename().string(), version});
            }
        }
    }
    return result;
}

std::string caseName(const ::testing::TestParamInfo<Case>& info)
{
    std::string name;
    bool isUpper = true;
    for (const char c : info.param._sample + info.param._version) {
        if (c != '-') {
            name += isUpper ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
        }
        isUpper = c == '-';
    }
    return name;
}

class GccSamplesTest : public ::testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        fs::create_directory(_dir.path("build"));
        const std::string version = GetParam()._version;
        ASSERT_EQ(run("cd build && SRC='" + source() + "' CXX=g++" + version + " CC=gcc" + version +
                      " bash -eu '" + source() + "/make'"),
                  0)
            << output();
        std::string words = "-o imported --gcov gcov" + version + " --examples 5 build";
        if (fs::exists(source() + "/known")) {
            words += " --known '" + source() + "/known'";
        }
        _status = run("ZEM_BIN='" ZEM_BINARY_DIR "/bin' '" ZEM_SOURCE_DIR "/script/compare-gcov' " +
                      words);
    }

    std::string source() const { return std::string(samplesFolder) + "/" + GetParam()._sample; }

    int run(const std::string& command)
    {
        const std::string line = "cd '" + _dir.path() + "' && { " + command + "; } > out 2>&1";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string output() const { return TempDir::read(_dir.path("out")); }

    // Compares the marked lines of one source file; returns their number.
    size_t checkMarks(const ZEMFileRecord& record);

    const TempDir _dir;
    int _status = -1;
};

size_t GccSamplesTest::checkMarks(const ZEMFileRecord& record)
{
    DrawnFile drawn;
    EXPECT_TRUE(drawn.open(record)) << record._filename;
    size_t checked = 0;
    for (uint32_t line = 1; line <= drawn.nLines(); ++line) {
        const std::string wanted = markOf(drawn.text(line));
        if (wanted.empty()) {
            continue;
        }
        const std::string marks = drawn.marks(line);
        const std::string place = std::string(record._filename) + ":" + std::to_string(line) +
                                  ", drawn " + marks + (drawn.isRed(line) ? " red" : "");
        if (!drawn.isRed(line) && !drawn.hasMark(line) && !drawn.isInsideRun(line)) {
            continue; // an optimised build need not have code for it
        }
        EXPECT_EQ(drawn.isRed(line), wanted == "red") << place;
        if (wanted == "part") {
            EXPECT_NE(("/" + marks + "/").find("/0/"), std::string::npos) << place;
        } else if (wanted != "run" && wanted != "red") {
            EXPECT_NE(("/" + marks + "/").find("/" + wanted + "/"), std::string::npos) << place;
        }
        ++checked;
    }
    return checked;
}

TEST_P(GccSamplesTest, ViewAgreesWithGcovAndWithTheSource)
{
    const std::string compared = output();
    EXPECT_EQ(_status, 0) << compared;
    if (GetParam()._version.empty()) {
        EXPECT_EQ(compared.find("did not occur"), std::string::npos) << compared;
    }
    ZEMRepository repository;
    ASSERT_EQ(repository.processFile(_dir.path("imported/compare.log").c_str()), 0);
    size_t checked = 0;
    ListIterator<ZEMFileRecord*> files(repository.srcfiles());
    while (const ZEMFileRecord* record = files.next()) {
        checked += checkMarks(*record);
    }
    size_t all = 0;
    for (const auto& entry : fs::directory_iterator(source())) {
        all += marksIn(entry.path().string());
    }
    // The optimised sample takes the source of another, so that it has no marks of its own.
    EXPECT_GE(checked, all) << compared;
    if (fs::exists(source() + "/known")) {
        const std::string words =
            " --gcov gcov" + GetParam()._version + " imported/compare.log build";
        EXPECT_EQ(run(ZEM_BINARY_DIR "/bin/compare-gcov" + words), 1) << output();
        EXPECT_EQ(run(ZEM_BINARY_DIR "/bin/compare-gcov --allow none" + words), 2) << output();
    }
}

TEST(CompareGcovTest, NothingToCompareIsAnErrorOfItsOwn)
{
    const TempDir dir;
    const std::string command = "ZEM_BIN='" ZEM_BINARY_DIR "/bin' '" ZEM_SOURCE_DIR
                                "/script/compare-gcov' '" +
                                dir.path() + "' >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 2);
}

INSTANTIATE_TEST_SUITE_P(All, GccSamplesTest, ::testing::ValuesIn(cases()), caseName);

} // namespace
