#include "tests/support/TempDir.h"
#include "tools/run/coveredPrograms.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A file with three section headers: none, the names, and one called `name`.
struct ElfText
{
    bool _is64 = true;
    bool _isBig = false;
    unsigned _type = 3;
    std::string _name = "__llvm_covmap";
    bool _hasLargeNumbers = false; // number of sections and of that with names stand elsewhere

    void put(std::string& bytes, size_t at, size_t size, uint64_t value) const
    {
        for (size_t i = 0; i < size; ++i) {
            bytes[at + (_isBig ? size - 1 - i : i)] = static_cast<char>(value >> (8 * i));
        }
    }

    std::string bytes() const
    {
        const size_t header = _is64 ? 64 : 40; // of a section
        const size_t table = 0x80;
        const size_t names = table + 3 * header;
        std::string result(names, '\0');
        result.replace(0, 6,
                       std::string("\177ELF") + (_is64 ? '\2' : '\1') + (_isBig ? '\2' : '\1'));
        put(result, 16, 2, _type);
        put(result, _is64 ? 40 : 32, _is64 ? 8 : 4, table);
        put(result, _is64 ? 58 : 46, 2, header);
        put(result, _is64 ? 60 : 48, 2, _hasLargeNumbers ? 0 : 3);
        put(result, _is64 ? 62 : 50, 2, _hasLargeNumbers ? 0xffff : 1);
        put(result, table + (_is64 ? 32 : 20), _is64 ? 8 : 4, 3);
        put(result, table + (_is64 ? 40 : 24), 4, 1);
        put(result, table + header + (_is64 ? 24 : 16), _is64 ? 8 : 4, names);
        put(result, table + header + (_is64 ? 32 : 20), _is64 ? 8 : 4, _name.size() + 2);
        put(result, table + 2 * header, 4, 1);
        return result + '\0' + _name + '\0';
    }
};

class CoveredProgramsTest : public ::testing::Test
{
protected:
    bool is(const ElfText& text) const
    {
        _dir.write("one/file", text.bytes());
        return !coveredPrograms(_dir.path("one")).empty();
    }

    TempDir _dir;
};

TEST_F(CoveredProgramsTest, KnowsProgramsAndLibrariesOfAllKinds)
{
    for (const bool is64 : {true, false}) {
        for (const bool isBig : {true, false}) {
            for (const bool hasLargeNumbers : {true, false}) {
                ElfText text = {is64, isBig, 3, "__llvm_covmap", hasLargeNumbers};
                EXPECT_TRUE(is(text)) << is64 << isBig << hasLargeNumbers;
                text._type = 2;
                EXPECT_TRUE(is(text)) << is64 << isBig << hasLargeNumbers;
                text._type = 1;
                EXPECT_FALSE(is(text)) << "an object that is not linked";
                text._type = 3;
                text._name = "__llvm_covmaps";
                EXPECT_FALSE(is(text));
            }
        }
    }
}

TEST_F(CoveredProgramsTest, FindsEachBelowAFolderOnce)
{
    const std::string whole = ElfText().bytes();
    const std::string library = _dir.write("lib/libx.so.1.2", whole);
    const std::string program = _dir.write("bin/x", whole);
    _dir.write("bin/script", "#!/bin/sh\n");
    _dir.write("CMakeFiles/3.25.1/CompilerIdCXX/a.out", whole); // tries the compiler
    fs::create_symlink("libx.so.1.2", _dir.path("lib/libx.so.9"));
    EXPECT_EQ(coveredPrograms(_dir.path()), (std::vector<std::string>{program, library}));
    EXPECT_TRUE(coveredPrograms(_dir.path("none")).empty());
}

} // namespace
