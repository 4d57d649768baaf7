// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovInput.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

constexpr uintmax_t HugeFile = 3ull << 30;

class GcovInputTest : public ::testing::Test
{
protected:
    // A file that begins with `bytes` and is sparse up to `size`.
    std::string sparse(const std::string& bytes, uintmax_t size) const
    {
        const std::string path = _dir.write("a", bytes);
        std::filesystem::resize_file(path, size);
        return path;
    }

    const TempDir _dir;
    GcovInput _notes{GcovWords::NotesMagic};
    GcovInput _counters{GcovWords::CountersMagic};
};

class GcovInputLayoutTest : public GcovInputTest, public ::testing::WithParamInterface<int>
{};

TEST_P(GcovInputLayoutTest, GivesAllThatTheRecordsClaim)
{
    GcovBuilder builder(GetParam());
    builder.notesHead(SampleStamp, std::string(200, 'd'));
    for (uint32_t i = 0; i < 9; ++i) {
        builder.record(0x01430000, std::vector<uint32_t>(100000, i)); // 400 KB
    }
    ASSERT_TRUE(_notes.read(_dir.write("a.gcno", builder.bytes())));
    EXPECT_TRUE(_notes.bytes() == builder.bytes());

    const std::string sample = sampleCounters(GetParam(), true);
    ASSERT_TRUE(_counters.read(_dir.write("a.gcda", sample)));
    EXPECT_EQ(_counters.bytes(), sample);
}

INSTANTIATE_TEST_SUITE_P(Versions, GcovInputLayoutTest, ::testing::Values(9, 11, 12, 14),
                         ::testing::PrintToStringParamName());

TEST_F(GcovInputTest, HugeFileOfSomethingElseIsReadNoFurtherThanItsBeginning)
{
    ASSERT_TRUE(_notes.read(sparse("something", HugeFile)));
    EXPECT_LE(_notes.bytes().size(), 64u * 1024);
}

TEST_F(GcovInputTest, HugeFileIsReadNoFurtherThanItsClosingWord)
{
    ASSERT_TRUE(_counters.read(sparse(sampleCounters(12), HugeFile)));
    EXPECT_LE(_counters.bytes().size(), 64u * 1024);
}

TEST_F(GcovInputTest, HugeRecordsAreRefusedUnread)
{
    GcovBuilder builder(12);
    builder.notesHead(SampleStamp, "/build");
    builder.word(0x01430000);
    builder.word(0x7fffffff);
    EXPECT_FALSE(_notes.read(sparse(builder.bytes(), HugeFile)));
    EXPECT_EQ(_notes.problem(), "Its records claim more than 256 MiB");
    EXPECT_LE(_notes.bytes().size(), 64u * 1024);
}

TEST_F(GcovInputTest, RecordThatIsCutShortIsLeftToTheReader)
{
    const std::string sample = sampleNotes(12);
    for (size_t at = 0; at < sample.size(); ++at) {
        GcovInput input(GcovWords::NotesMagic);
        ASSERT_TRUE(input.read(_dir.write("a", sample.substr(0, at))));
        EXPECT_EQ(input.bytes(), sample.substr(0, at));
    }
}

TEST_F(GcovInputTest, EveryChangedByteIsTolerated)
{
    const std::string sample = sampleCounters(12);
    for (size_t at = 0; at < sample.size(); ++at) {
        std::string changed = sample;
        changed[at] = static_cast<char>(changed[at] ^ 0xff);
        GcovInput input(GcovWords::CountersMagic);
        EXPECT_TRUE(input.read(_dir.write("a", changed)));
    }
}

TEST_F(GcovInputTest, EachFileHasItsOwnBytes)
{
    const std::string small = sampleNotes(12);
    GcovBuilder builder(12);
    builder.notesHead(SampleStamp, "/build");
    builder.record(0x01430000, std::vector<uint32_t>(100000, 7));
    const std::string large = builder.bytes();
    for (const std::string& text : {small, large, small, std::string(), large}) {
        ASSERT_TRUE(_notes.read(_dir.write("a", text)));
        EXPECT_TRUE(_notes.bytes() == text);
    }
    EXPECT_FALSE(_notes.read(_dir.path("none")));
    EXPECT_EQ(_notes.bytes(), "");
    ASSERT_TRUE(_notes.read(_dir.write("a", small)));
    EXPECT_EQ(_notes.bytes(), small);
    EXPECT_EQ(_notes.problem(), "");
}

// So large that its records are asked what is to be read.
TEST_F(GcovInputTest, LargeFileIsReadAsFarAsItsRecordsGo)
{
    GcovBuilder builder(12);
    builder.notesHead(SampleStamp, "/build");
    for (uint32_t i = 0; i < 5; ++i) {
        builder.record(0x01430000, std::vector<uint32_t>(1000000, i)); // 4 MB
    }
    ASSERT_TRUE(_notes.read(_dir.write("a.gcno", builder.bytes())));
    EXPECT_TRUE(_notes.bytes() == builder.bytes());
}

TEST_F(GcovInputTest, FileThatIsNotThereHasTheSystemsReason)
{
    EXPECT_FALSE(_notes.read(_dir.path("none")));
    EXPECT_EQ(_notes.problem(), "No such file or directory");
}

} // namespace
