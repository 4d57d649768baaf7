// SPDX-License-Identifier: MIT
#include "tools/import/llvm/RawProfile.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"
#include "tools/import/llvm/CoverageImage.h"
#include "tools/import/llvm/md5Low.h"

#include <gtest/gtest.h>

namespace {

const std::vector<LlvmFunction> functions = {
    {"f", 0x249844958, "", {2, 1}}, {"unused", 7}, {"main", 0x61f, "", {1, 0, 400}, 1}};

std::string layout(const LlvmTarget& target)
{
    return "raw " + std::to_string(target._rawVersion) + (target._is64 ? " 64" : " 32") +
           (target._isBigEndian ? " big" : " little") + (target._isSingleByte ? " bytes" : "") +
           (target._isPacked ? " packed" : "");
}

std::vector<LlvmTarget> targets()
{
    std::vector<LlvmTarget> all;
    for (const uint32_t version : {5, 7, 8, 9, 10}) {
        for (int bits = 0; bits < 8; ++bits) {
            LlvmTarget target;
            target._rawVersion = version;
            target._is64 = (bits & 1) == 0;
            target._isBigEndian = (bits & 2) != 0;
            target._isSingleByte = (bits & 4) != 0;
            target._isPacked = bits == 3;
            target._buildId = bits == 1 ? "" : std::string("0123456789abcdefghij", 20);
            all.push_back(target);
        }
    }
    return all;
}

// "f 2 1, main 1 0 400" of all parts.
std::string text(const RawProfile& profile)
{
    std::string result;
    for (const ProfilePart& part : profile.parts()) {
        for (const ProfileRecord& record : part._records) {
            result += result.empty() ? "" : ", ";
            result += record._name == md5Low("f", 1)      ? "f"
                      : record._name == md5Low("main", 4) ? "main"
                                                          : "?";
            std::vector<uint64_t> counters(record._nCounters);
            part.readCounters(record, counters.data());
            for (const uint64_t counter : counters) {
                result += " " + std::to_string(counter);
            }
        }
    }
    return result;
}

TEST(RawProfileTest, ReadsEveryLayout)
{
    for (const LlvmTarget& target : targets()) {
        const std::string bytes = rawProfile(target, functions);
        RawProfile profile;
        ASSERT_EQ(profile.read(bytes, {}), RawProfile::Ok) << layout(target);
        EXPECT_EQ(text(profile), target._isSingleByte ? "f 1 1, main 1 0 1" : "f 2 1, main 1 0 400")
            << layout(target);
        const ProfilePart& part = profile.parts().front();
        EXPECT_EQ(part._records[0]._hash, functions[0]._hash);
        EXPECT_EQ(part._isSingleByte, target._isSingleByte);
        const bool hasId = target._rawVersion >= 7 && !target._buildId.empty();
        ASSERT_EQ(part._binaryIds.size(), hasId ? 1u : 0u) << layout(target);
        EXPECT_TRUE(!hasId || part._binaryIds[0] == target._buildId);
        EXPECT_EQ(part._names, nameSection(target, functions)) << layout(target);
        EXPECT_EQ(RawProfile::versionOf(bytes.data(), bytes.size()), target._rawVersion);
        EXPECT_EQ(RawProfile::isSingleByte(bytes.data(), bytes.size()), target._isSingleByte);
        EXPECT_TRUE(RawProfile::isKnown(bytes.data(), bytes.size()));

        // Several behind each other, with zeros between.
        const std::string two = bytes + std::string(16, '\0') + bytes;
        ASSERT_EQ(profile.read(two, {}), RawProfile::Ok) << layout(target);
        EXPECT_EQ(profile.parts().size(), 2u);
        EXPECT_EQ(profile.read(bytes + "rest", {}), RawProfile::Damaged);
        EXPECT_TRUE(profile.parts().empty());
    }
}

TEST(RawProfileTest, ReadsCountersWithoutTheValuesBehind)
{
    // So a program leaves it that is killed while it keeps its profile up to date.
    const std::string whole = rawProfile(LlvmTarget(), functions);
    const std::string bytes = whole.substr(0, whole.size() - 16);
    RawProfile profile;
    EXPECT_EQ(profile.read(bytes, {}), RawProfile::Ok);
    EXPECT_EQ(text(profile), "f 2 1, main 1 0 400");
}

TEST(RawProfileTest, SaysWhatItCannotRead)
{
    RawProfile profile;
    EXPECT_EQ(profile.read("", {}), RawProfile::Empty);
    EXPECT_EQ(profile.read(std::string(300, 'x'), {}), RawProfile::NotRaw);
    EXPECT_EQ(profile.read("\x81", {}), RawProfile::NotRaw);
    for (const uint32_t version : {4u, 6u, 11u, 12345u}) {
        LlvmTarget target;
        target._rawVersion = version;
        const std::string bytes = rawProfile(target, functions);
        EXPECT_EQ(profile.read(bytes, {}), RawProfile::UnknownVersion) << version;
        EXPECT_FALSE(RawProfile::isKnown(bytes.data(), bytes.size()));
    }
    // Flags of other profiles: of the compiler's own optimisations, of memory.
    for (const int flag : {55, 56, 57, 58, 59, 61, 62, 63}) {
        std::string bytes = rawProfile(LlvmTarget(), functions);
        bytes[8 + flag / 8] = static_cast<char>(1 << flag % 8);
        EXPECT_EQ(profile.read(bytes, {}), RawProfile::UnknownVersion) << flag;
    }
}

// What each field of the head can claim. Nothing is allocated for it.
TEST(RawProfileTest, BelievesNoNumber)
{
    for (const LlvmTarget& target : targets()) {
        const std::string whole = rawProfile(target, functions);
        const size_t fields = target._rawVersion >= 10 ? 16 : target._rawVersion >= 9 ? 14 : 10;
        for (size_t field = 2; field < fields; ++field) {
            for (const uint64_t value :
                 {uint64_t(0), uint64_t(1), uint64_t(1) << 20, UINT64_MAX / 8, UINT64_MAX}) {
                std::string bytes = whole;
                bytes.replace(8 * field, 8, LlvmNumbers(target._isBigEndian).u64(value).bytes());
                RawProfile profile;
                (void)profile.read(bytes, {});
                EXPECT_LE(text(profile).size(), 4 * whole.size());
            }
        }
    }
}

TEST(RawProfileTest, SurvivesEveryCutAndEveryByte)
{
    for (const LlvmTarget& target : targets()) {
        const std::string whole = rawProfile(target, functions);
        RawProfile profile;
        for (size_t size = 0; size + 16 < whole.size(); ++size) {
            EXPECT_NE(profile.read(whole.substr(0, size), {}), RawProfile::Ok) << size;
        }
        for (size_t at = 0; at < whole.size(); ++at) {
            std::string changed = whole;
            changed[at] = static_cast<char>(~changed[at]);
            (void)profile.read(changed, {});
            (void)text(profile);
        }
    }
}

TEST(RawProfileTest, RefusesNumbersOfBuildsThatEndInTheirSize)
{
    LlvmTarget target;
    target._rawVersion = 7;
    target._buildId = "0123456789abcde";
    const std::string whole = rawProfile(target, functions);
    const size_t ids = whole.find(target._buildId) - 8;
    for (size_t left = 1; left < 8; ++left) {
        std::string bytes = whole;
        bytes.replace(16, 8, LlvmNumbers().u64(8 + 15 + left).bytes());
        bytes.insert(ids + 8 + 15, std::string(left, '\0'));
        RawProfile profile;
        EXPECT_EQ(profile.read(bytes, {}), RawProfile::Damaged) << left;
    }
}

// Records that claim the same counters again and again would take time beyond all proportion.
TEST(RawProfileTest, RefusesRecordsThatOverlap)
{
    LlvmTarget target;
    std::vector<LlvmFunction> two = {{"f", 1, "", {1, 2}}, {"main", 2, "", {3}}};
    std::string bytes = rawProfile(target, two);
    RawProfile profile;
    ASSERT_EQ(profile.read(bytes, {}), RawProfile::Ok);
    const size_t second = 88 + 48;
    bytes.replace(second + 16, 8, LlvmNumbers().u64(0u - uint64_t(0x180) - 48).bytes());
    EXPECT_EQ(profile.read(bytes, {}), RawProfile::Ok) << "one counter twice is none too many";
    bytes.replace(second + 40, 4, LlvmNumbers().u32(2).bytes());
    EXPECT_EQ(profile.read(bytes, {}), RawProfile::Damaged);
}

// With -profile-correlate=binary the profile has counters alone.
TEST(RawProfileTest, FindsWhatItLeavesOutInTheProgram)
{
    LlvmTarget target;
    target._rawVersion = 10;
    const std::vector<std::string> files = {"/w", "a.c"};
    const std::vector<LlvmFunction> one = {
        {"f", 5, plainMapping({{counterNumber(0), 1, 1, 2, 2}}), {}}};
    LlvmNumbers data;
    data.u64(md5Low("f", 1)).u64(5).u64(0x4008).u64(0).u64(0).u64(0).u32(2);
    data.text(std::string(12, '\0'));
    const TempDir dir;
    CoverageImage image;
    ASSERT_EQ(image.read(dir.write(
                  "program", elfFile(target, {{"__llvm_covmap", mapSection(target, files)},
                                              {"__llvm_covfun", recordSection(target, files, one)},
                                              {"__llvm_covnames", nameSection(target, one)},
                                              {"__llvm_covdata", data.bytes()},
                                              {"__llvm_prf_cnts", "", 8, 0x4000}}))),
              CoverageImage::Ok);
    LlvmNumbers profile;
    profile.u64(0xff6c70726f667281).u64(10).u64(0).u64(0).u64(0).u64(3).u64(0).u64(0).u64(0);
    profile.u64(0).u64(0).u64(0).u64(0).u64(0).u64(0).u64(2).u64(8).u64(9).u64(10);
    RawProfile raw;
    EXPECT_EQ(raw.read(profile.bytes(), {}), RawProfile::LeftOut);
    ASSERT_EQ(raw.read(profile.bytes(), {&image}), RawProfile::Ok);
    EXPECT_EQ(text(raw), "f 9 10");
}

} // namespace
