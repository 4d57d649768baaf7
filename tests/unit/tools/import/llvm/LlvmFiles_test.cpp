// SPDX-License-Identifier: MIT
//
// The parts of a program that hold its coverage map, one by one.
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"
#include "tools/import/llvm/ElfFile.h"
#include "tools/import/llvm/FileLists.h"
#include "tools/import/llvm/ProfileNames.h"
#include "tools/import/llvm/md5Low.h"
#include "tools/import/llvm/symbolOf.h"

#include <gtest/gtest.h>

namespace {

uint64_t hashOf(const std::string& bytes)
{
    return md5Low(bytes.data(), bytes.size());
}

// The bytes of all sections of a name, or the problem.
std::string section(const std::string& path, const char* name)
{
    ElfFile file;
    std::string bytes;
    return file.open(path) && file.read(name, 8, bytes) ? bytes : "problem: " + file.problem();
}

TEST(ElfFileTest, FindsSectionsByName)
{
    const TempDir dir;
    for (int bits = 0; bits < 4; ++bits) {
        LlvmTarget target;
        target._is64 = (bits & 1) == 0;
        target._isBigEndian = (bits & 2) != 0;
        const std::string path =
            dir.write("program", elfFile(target,
                                         {{".text", "code"},
                                          {"__llvm_covfun", "one"},
                                          {"__llvm_prf_names", "gone", 8},
                                          {"__llvm_covfun", "second record"},
                                          {"__llvm_prf_cnts", "", 8, 0x4321},
                                          {"__llvm_covmap", "list", 1, 0, 0x800}},
                                         bits == 0 ? 1 : 3));
        EXPECT_EQ(section(path, "__llvm_covfun"), std::string("one\0\0\0\0\0second record", 21))
            << bits;
        EXPECT_EQ(section(path, "__llvm_prf_names"), "");
        EXPECT_EQ(section(path, "nowhere"), "");
        EXPECT_NE(section(path, "__llvm_covmap").find("is compressed"), std::string::npos);
        ElfFile file;
        ASSERT_TRUE(file.open(path));
        EXPECT_EQ(file.isObject(), bits == 0);
        EXPECT_EQ(file.isBigEndian(), target._isBigEndian);
        EXPECT_EQ(file.find("__llvm_prf_cnts")->_address, 0x4321u);
        EXPECT_EQ(file.buildId(), "");
    }
}

TEST(ElfFileTest, FindsTheNumberOfTheBuildAmongItsNotes)
{
    const TempDir dir;
    const auto note = [](uint32_t type, const std::string& owner, const std::string& content) {
        LlvmNumbers bytes;
        bytes.u32(owner.size()).u32(content.size()).u32(type);
        return bytes.text(owner).align(4).text(content).align(4).bytes();
    };
    const std::string gnu("GNU\0", 4);
    constexpr uint32_t noteType = 7;
    ElfFile file;
    ASSERT_TRUE(
        file.open(dir.write("program", elfFile(LlvmTarget(),
                                               {{".data", note(3, gnu, "data")},
                                                {".large", note(3, gnu, "large") +
                                                               note(9, gnu, std::string(5000, 'x')),
                                                 noteType},
                                                {".others", note(3, "GNA", "other"), noteType},
                                                {".tag", note(1, gnu, "tag"), noteType},
                                                {".build", note(3, gnu, "build"), noteType}}))));
    EXPECT_EQ(file.buildId(), "build");
}

// Of more sections than the head can count, the number stands in the first of them.
TEST(ElfFileTest, CountsSectionsOfLargeObjects)
{
    const TempDir dir;
    std::string bytes = elfFile(LlvmTarget(), {{"__llvm_covmap", "list"}});
    const size_t table = bytes.size() - 3 * 64;
    bytes.replace(60, 4, LlvmNumbers().u16(0).u16(0xffff).bytes());
    bytes.replace(table + 32, 8, LlvmNumbers().u64(3).bytes());
    bytes.replace(table + 40, 4, LlvmNumbers().u32(2).bytes());
    EXPECT_EQ(section(dir.write("large.o", bytes), "__llvm_covmap"), "list");
}

TEST(ElfFileTest, RefusesWhatDoesNotLieInTheFile)
{
    const TempDir dir;
    const std::string whole = elfFile(LlvmTarget(), {{"__llvm_covmap", "list"}});
    const size_t table = whole.size() - 3 * 64;
    const auto with = [&](size_t at, uint64_t value) {
        std::string bytes = whole;
        bytes.replace(at, 8, LlvmNumbers().u64(value).bytes());
        return section(dir.write("program", bytes), "__llvm_covmap");
    };
    for (const uint64_t value : {uint64_t(4000), UINT64_MAX, UINT64_MAX - 63}) {
        EXPECT_EQ(with(40, value).find("problem"), 0u);               // the table
        EXPECT_EQ(with(table + 64 + 24, value).find("problem"), 0u);  // the section
        EXPECT_EQ(with(table + 64 + 32, value).find("problem"), 0u);  // its size
        EXPECT_EQ(with(table + 128 + 24, value).find("problem"), 0u); // the names
    }
    EXPECT_EQ(section(dir.write("text", "hello"), "x"), "problem: it is no ELF file");
    EXPECT_EQ(section(dir.path("nowhere"), "x"), "problem: No such file or directory");
    EXPECT_EQ(section(dir.path(), "x"), "problem: Not a regular file");
}

// A thousand sections that are all of the file would need a thousand times its size.
TEST(ElfFileTest, RefusesSectionsThatOverlap)
{
    const TempDir dir;
    std::string bytes =
        elfFile(LlvmTarget(), std::vector<ElfPart>(100, {"__llvm_covfun", std::string(5000, 'x')}));
    const size_t table = bytes.size() - 102 * 64;
    for (size_t i = 1; i <= 100; ++i) {
        bytes.replace(table + i * 64 + 24, 16, LlvmNumbers().u64(0).u64(400000).bytes());
    }
    EXPECT_NE(section(dir.write("program", bytes), "__llvm_covfun").find("overlap"),
              std::string::npos);
}

TEST(FileListsTest, ResolvesNamesByVersion)
{
    const std::vector<std::string> files = {"/w/bld", "../src/./a.cc", "/abs/b.h", "c.h"};
    for (const uint32_t version : {3u, 4u, 5u, 6u}) {
        for (const bool isPacked : {false, true}) {
            LlvmTarget target;
            target._mapVersion = version;
            target._isPacked = isPacked;
            const std::string bytes = mapSection(target, files);
            FileLists lists;
            ASSERT_EQ(lists.read(bytes, false), FileLists::Ok);
            // Without what fills it to a multiple of 8.
            const std::string list = bytes.substr(16, static_cast<unsigned char>(bytes[4]));
            const std::vector<std::string>* found = lists.find(hashOf(list));
            ASSERT_NE(found, nullptr);
            const std::vector<std::string> folded = {"/w/bld", "/w/src/a.cc", "/abs/b.h",
                                                     "/w/bld/c.h"};
            EXPECT_EQ(*found, version < 5 ? files : folded);
            EXPECT_EQ(lists.find(1), nullptr);
        }
    }
}

TEST(FileListsTest, KeepsRelativeNamesWithoutAFolder)
{
    LlvmTarget target;
    FileLists lists;
    const std::string bytes = mapSection(target, {"", "a.cc"});
    ASSERT_EQ(lists.read(bytes, false), FileLists::Ok);
    EXPECT_EQ((*lists.find(hashOf(bytes.substr(16, static_cast<unsigned char>(bytes[4])))))[1],
              "a.cc");
}

TEST(FileListsTest, RefusesWhatItDoesNotKnow)
{
    LlvmTarget target;
    for (const uint32_t version : {0u, 2u, 7u, 99u}) {
        target._mapVersion = version;
        FileLists lists;
        EXPECT_EQ(lists.read(mapSection(target, {"/w", "a"}), false), FileLists::UnknownVersion);
    }
    target._mapVersion = 5;
    const std::string whole = mapSection(target, {"/w", "a.cc", "b.cc"});
    for (size_t size = 1; size < whole.size() - 7; ++size) {
        FileLists lists;
        EXPECT_EQ(lists.read(whole.substr(0, size), false), FileLists::Damaged) << size;
    }
}

TEST(ProfileNamesTest, FindsNamesByHash)
{
    ProfileNames names;
    // Chunks of several units, plain and packed, with zeros between.
    ASSERT_TRUE(names.add(llvmText("f\x01main", false) + std::string(5, '\0') +
                          llvmText("a.cc:_ZL1gv", true) + std::string(3, '\0')));
    EXPECT_EQ(names.find(0xcc914f75dd4ca18f), "f");
    EXPECT_EQ(names.find(0xdb956436e78dd5fa), "main");
    EXPECT_EQ(names.find(hashOf("a.cc:_ZL1gv")), "a.cc:_ZL1gv");
    EXPECT_EQ(names.find(5), "");
}

// Sizes that the bytes behind them cannot have.
TEST(ProfileNamesTest, RefusesBombsAndDamage)
{
    const std::string packed = llvmText(std::string(100000, 'x'), true);
    for (const uint64_t size : {uint64_t(99999), uint64_t(100001), uint64_t(1) << 40, UINT64_MAX}) {
        LlvmNumbers bytes;
        bytes.leb(size).leb(packed.size() - 5).text(packed.substr(5));
        EXPECT_FALSE(ProfileNames().add(bytes.bytes())) << size;
        EXPECT_FALSE(ProfileNames().add(LlvmNumbers().leb(size).leb(0).text("f").bytes()));
    }
    for (size_t size = 1; size < packed.size(); ++size) {
        EXPECT_FALSE(ProfileNames().add(packed.substr(0, size))) << size;
    }
}

// A few hundred bytes that would unpack to millions of names.
TEST(FileListsTest, RefusesBombs)
{
    const std::string text = llvmText(std::string(8 << 20, '\0'), true);
    const std::string list = LlvmNumbers().leb(8 << 20).text(text).bytes();
    LlvmNumbers bytes;
    bytes.u32(0).u32(list.size()).u32(0).u32(5).text(list);
    FileLists lists;
    EXPECT_EQ(lists.read(bytes.bytes(), false), FileLists::Damaged);
    EXPECT_FALSE(ProfileNames().add(llvmText(std::string(40 << 20, '\x01'), true)));
}

TEST(SymbolOfTest, CutsWhatTheCompilerPutsAroundIt)
{
    EXPECT_EQ(symbolOf("_Z1fv"), "_Z1fv");
    EXPECT_EQ(symbolOf("main.cpp:_ZL3fooi"), "_ZL3fooi");
    EXPECT_EQ(symbolOf("main.cpp;_ZL3fooi"), "_ZL3fooi");
    EXPECT_EQ(symbolOf("a:b.cpp:half"), "half");
    EXPECT_EQ(symbolOf("a.c:half.__uniq.123456"), "half");
    EXPECT_EQ(symbolOf("-[Class with:and:]"), "-[Class with:and:]");
    EXPECT_EQ(symbolOf("m.m:+[Class make:]"), "+[Class make:]");
    EXPECT_EQ(symbolOf(""), "");
}

} // namespace
