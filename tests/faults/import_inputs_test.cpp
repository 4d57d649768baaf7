// SPDX-License-Identifier: MIT
//
// Each importer with an input that may not be read, and with one that is written to while it is
// read: it is named, and the import does not pass for whole. No compiler is needed.
#include "tests/faults/FaultRun.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

class ImportInputsTest : public ::testing::Test
{
protected:
    struct Input
    {
        std::vector<std::string> words; // kind and inputs
        std::string file;               // of these
    };

    void SetUp() override
    {
        const std::vector<LlvmFunction> functions = {
            {"f", 5, plainMapping({{counterNumber(0), 1, 1, 3, 2}}), {4}}};
        _dir.write("gcc/a.gcno", sampleNotes(12));
        _dir.write("gcc/a.gcda", sampleCounters(12));
        _dir.write("llvm/program", llvmProgram(LlvmTarget(), {"/w", "a.cc"}, functions));
        _dir.write("llvm/a.profraw", rawProfile(LlvmTarget(), functions));
        _dir.write("lcov/a.info", "SF:/a.c\nDA:1,3\nend_of_record\n");
        _dir.write("gcov/a.gcov.json",
                   R"({"format_version":"1","current_working_directory":"/","files":[)"
                   R"({"file":"/a.c","functions":[],"lines":[{"line_number":1,"count":3}]}]})");
        _dir.write("cobertura/a.xml",
                   "<coverage><class filename='/a.c'><lines><line number='1' hits='3'/></lines>"
                   "</class></coverage>");
    }

    // Every file once by its name and once by that of its folder.
    std::vector<Input> inputs() const
    {
        const std::string kinds[] = {"lcov", "gcov", "cobertura"};
        const std::string names[] = {"/a.info", "/a.gcov.json", "/a.xml"};
        std::vector<Input> result = {{{"gcc", _dir.path("gcc")}, _dir.path("gcc/a.gcno")},
                                     {{"gcc", _dir.path("gcc")}, _dir.path("gcc/a.gcda")}};
        const std::string program = _dir.path("llvm/program");
        const std::string profile = _dir.path("llvm/a.profraw");
        for (const std::string& file : {program, profile}) {
            result.push_back({{"llvm", program, profile}, file});
            result.push_back({{"llvm", _dir.path("llvm")}, file});
        }
        for (size_t i = 0; i < 3; ++i) {
            const std::string folder = _dir.path(kinds[i]);
            result.push_back({{kinds[i], folder + names[i]}, folder + names[i]});
            result.push_back({{kinds[i], folder}, folder + names[i]});
        }
        return result;
    }

    ProgramResult import(const Input& input, const Fault& fault) const
    {
        std::vector<std::string> words = {builtProgram("zem-import")};
        words.insert(words.end(), input.words.begin(), input.words.end());
        words.insert(words.end(), {"-o", _dir.path("out")});
        return runWithFault(words, fault);
    }

    // Lets the fault meet every input.
    void sweep(Fault fault, const std::string& problem)
    {
        for (const Input& input : inputs()) {
            SCOPED_TRACE(input.words[0] + " " + input.words[1] + ", " + input.file);
            fault.file = input.file;
            const ProgramResult result = import(input, fault);
            EXPECT_EQ(result.status, 1);
            EXPECT_NE(result.err.find(problem), std::string::npos) << result.err;
            const std::string unit = input.file.substr(0, input.file.rfind(".gc"));
            EXPECT_NE(result.err.find(unit), std::string::npos) << result.err;
        }
    }

    const TempDir _dir;
};

TEST_F(ImportInputsTest, OneThatMayNotBeReadIsNamed)
{
    Fault fault = {"open", 1, "last", EACCES};
    sweep(fault, "Permission denied");
}

TEST_F(ImportInputsTest, OneThatIsWrittenToWhileItIsReadIsNamed)
{
    Fault fault = {"read", 1, "touch"};
    sweep(fault, "It was written to while it was read");
    for (const Input& input : inputs()) {
        const ProgramResult result = import(input, Fault());
        EXPECT_EQ(result.status, 0) << result.err;
    }
}

} // namespace
