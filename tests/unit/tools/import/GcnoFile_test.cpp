// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcnoFile.h"

#include "tests/unit/tools/import/GcovBuilder.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <tuple>

namespace {

// Exactly as many bytes as the text has, so that the sanitizer sees a read past the end.
class Bytes
{
public:
    explicit Bytes(const std::string& text)
        : _bytes(new unsigned char[text.size()]), _size(text.size())
    {
        std::memcpy(_bytes.get(), text.data(), _size);
    }
    const unsigned char* data() const { return _bytes.get(); }
    size_t size() const { return _size; }

private:
    std::unique_ptr<unsigned char[]> _bytes;
    size_t _size;
};

// Reads all; returns the number of functions whose graph was good.
int readAll(const std::string& text, bool& isDamaged)
{
    const Bytes bytes(text);
    GcnoFile notes(bytes.data(), bytes.size());
    int functions = 0;
    if (notes.open() == GcnoFile::Ok) {
        GcnoFunction function;
        while (notes.nextFunction(function)) {
            functions += notes.readGraph(function) ? 1 : 0;
        }
    }
    isDamaged = notes.damaged();
    return functions;
}

class GcnoFileLayoutTest : public ::testing::TestWithParam<std::tuple<int, bool>>
{};

TEST_P(GcnoFileLayoutTest, ReadsTheSample)
{
    const Bytes bytes(sampleNotes(std::get<0>(GetParam()), std::get<1>(GetParam())));
    GcnoFile notes(bytes.data(), bytes.size());
    ASSERT_EQ(notes.open(), GcnoFile::Ok);
    EXPECT_EQ(notes.major(), std::get<0>(GetParam()));
    EXPECT_EQ(notes.stamp(), SampleStamp);
    EXPECT_EQ(notes.folder(), "/build");

    GcnoFunction function;
    ASSERT_TRUE(notes.nextFunction(function));
    EXPECT_EQ(function._ident, 7u);
    EXPECT_EQ(function._lineChecksum, 8u);
    EXPECT_EQ(function._graphChecksum, 9u);
    EXPECT_EQ(function._symbol, "work");
    EXPECT_FALSE(function._isArtificial);
    EXPECT_EQ(function._files, std::vector<std::string_view>{"a.cc"});
    EXPECT_EQ(function._startLine, 1u);
    EXPECT_EQ(function._startColumn, 5u);
    EXPECT_EQ(function._endLine, 6u);

    ASSERT_TRUE(notes.readGraph(function));
    EXPECT_EQ(function._nBlocks, 6u);
    ASSERT_EQ(function._arcs.size(), 6u);
    EXPECT_EQ(function._arcs[2]._from, 2u);
    EXPECT_EQ(function._arcs[2]._to, 4u);
    EXPECT_EQ(function._arcs[2]._flags, GcnoArc::OnTree);
    ASSERT_EQ(function._lines.size(), 6u);
    EXPECT_EQ(function._lines[3]._block, 4u);
    EXPECT_EQ(function._lines[3]._line, 5u);

    EXPECT_FALSE(notes.nextFunction(function));
    EXPECT_FALSE(notes.damaged());
}

INSTANTIATE_TEST_SUITE_P(Versions, GcnoFileLayoutTest,
                         ::testing::Combine(::testing::Range(9, 15), ::testing::Bool()),
                         [](const auto& info) {
                             return "Gcc" + std::to_string(std::get<0>(info.param)) +
                                    (std::get<1>(info.param) ? "BigEndian" : "LittleEndian");
                         });

TEST(GcnoFileTest, VersionsOutsideTheKnownOnesAreTold)
{
    for (const int major : {7, 8, 15, 23}) {
        const Bytes bytes(sampleNotes(major));
        GcnoFile notes(bytes.data(), bytes.size());
        EXPECT_EQ(notes.open(), GcnoFile::UnknownVersion);
        EXPECT_EQ(notes.major(), major);
    }
}

TEST(GcnoFileTest, OldStampWithDigitsIsUnknown)
{
    std::string text = sampleNotes(12);
    text.replace(4, 4, "*704"); // "407*"
    const Bytes bytes(text);
    GcnoFile notes(bytes.data(), bytes.size());
    EXPECT_EQ(notes.open(), GcnoFile::UnknownVersion);
    EXPECT_EQ(notes.major(), 4);
}

TEST(GcnoFileTest, CountersAreNoNotes)
{
    const Bytes bytes(sampleCounters(12));
    GcnoFile notes(bytes.data(), bytes.size());
    EXPECT_EQ(notes.open(), GcnoFile::NotNotes);
}

TEST(GcnoFileTest, GraphsMayBePassedBy)
{
    std::string text = sampleNotes(12);
    const std::string head = [] {
        GcovBuilder builder(12);
        builder.notesHead(SampleStamp, "/build");
        return builder.bytes();
    }();
    text += text.substr(head.size());
    const Bytes bytes(text);
    GcnoFile notes(bytes.data(), bytes.size());
    ASSERT_EQ(notes.open(), GcnoFile::Ok);
    GcnoFunction function;
    EXPECT_TRUE(notes.nextFunction(function));
    EXPECT_TRUE(notes.nextFunction(function));
    EXPECT_TRUE(notes.readGraph(function));
    EXPECT_EQ(function._arcs.size(), 6u);
    EXPECT_FALSE(notes.nextFunction(function));
}

TEST(GcnoFileTest, LinesNameTheirFile)
{
    GcovBuilder builder(12);
    builder.notesHead(1, "/build");
    builder.function(1, 2, 3, "f", 1, "a.cc", 1, 6);
    builder.blocks(3);
    builder.lines(2, "a.cc", {1}, "table.inc", {40, 41});
    const Bytes bytes(builder.bytes());
    GcnoFile notes(bytes.data(), bytes.size());
    ASSERT_EQ(notes.open(), GcnoFile::Ok);
    GcnoFunction function;
    ASSERT_TRUE(notes.nextFunction(function));
    EXPECT_TRUE(function._isArtificial);
    ASSERT_TRUE(notes.readGraph(function));
    EXPECT_EQ(function._files, (std::vector<std::string_view>{"a.cc", "table.inc"}));
    ASSERT_EQ(function._lines.size(), 3u);
    EXPECT_EQ(function._lines[0]._file, 0u);
    EXPECT_EQ(function._lines[2]._file, 1u);
    EXPECT_EQ(function._lines[2]._line, 41u);
}

TEST(GcnoFileTest, MoreBlocksThanBytesIsDamage)
{
    GcovBuilder builder(12);
    builder.notesHead(1, "/build");
    builder.function(1, 2, 3, "f", 0, "a.cc", 1, 6);
    builder.blocks(0x7fffffff);
    bool isDamaged = false;
    EXPECT_EQ(readAll(builder.bytes(), isDamaged), 0);
    EXPECT_TRUE(isDamaged);
}

TEST(GcnoFileTest, EachFileOfAFunctionHasOneNumber)
{
    GcovBuilder builder(12);
    builder.notesHead(1, "/build");
    builder.function(1, 2, 3, "f", 0, "a.cc", 1, 6);
    builder.blocks(4);
    for (uint32_t i = 0; i < 3000; ++i) {
        builder.lines(2, std::to_string(i % 1000) + ".inc", {i + 1}, "a.cc", {i + 1});
    }
    GcnoFile file(reinterpret_cast<const unsigned char*>(builder.bytes().data()),
                  builder.bytes().size());
    ASSERT_EQ(file.open(), GcnoFile::Ok);
    GcnoFunction function;
    ASSERT_TRUE(file.nextFunction(function));
    ASSERT_TRUE(file.readGraph(function));
    EXPECT_EQ(function._files.size(), 1001u);
    EXPECT_LE(file.nameComparisons(), 3 * function._lines.size()); // not each with each
    ASSERT_EQ(function._lines.size(), 6000u);
    EXPECT_EQ(function._lines[0]._file, 1u);
    EXPECT_EQ(function._lines[1]._file, 0u);
    EXPECT_EQ(function._lines[2000]._file, 1u);
    EXPECT_EQ(function._lines[2002]._file, 2u);
    EXPECT_EQ(function._files[2], "1.inc");
}

// What each of two ways finds of the first function of some notes.
struct Verdicts
{
    bool _isChecked = false;    // isInOneFile() met no damage
    bool _isInOneFile = false;  // what it said
    bool _isRead = false;       // readGraph() of another reader
    bool _isReadBehind = false; // readGraph() of the same reader
    size_t _files = 0;
};

Verdicts verdictsOf(const std::string& text)
{
    const Bytes bytes(text);
    GcnoFile checked(bytes.data(), bytes.size());
    GcnoFile read(bytes.data(), bytes.size());
    GcnoFunction function;
    Verdicts result;
    if (checked.open() == GcnoFile::Ok && checked.nextFunction(function)) {
        result._isInOneFile = checked.isInOneFile(function);
        result._isChecked = !checked.damaged();
        result._isReadBehind = checked.readGraph(function);
    }
    if (read.open() == GcnoFile::Ok && read.nextFunction(function)) {
        result._isRead = read.readGraph(function);
        result._files = function._files.size();
    }
    return result;
}

TEST(GcnoFileTest, FunctionThatIsLeftOutIsCheckedLikeOneThatIsRead)
{
    for (const auto& [major, other] : std::vector<std::pair<int, std::string>>{
             {GcovBuilder::Clang, "a.cc"}, {11, "a.cc"}, {12, "a.cc"}, {12, "b.cc"}}) {
        GcovBuilder builder(major);
        builder.notesHead(1, "/build");
        const size_t head = builder.bytes().size();
        builder.function(1, 2, 3, "f", 0, "a.cc", 1, 6);
        builder.blocks(4);
        builder.arcs(0, {{2, 1}, {3, 0}});
        builder.lines(2, "a.cc", {1, 2}, "a.cc", {3});
        builder.lines(3, other, {40, 41});
        builder.lines(3, "a.cc", {5});
        const std::string text = builder.bytes();
        EXPECT_TRUE(verdictsOf(text)._isRead);
        EXPECT_EQ(verdictsOf(text)._isInOneFile, other == "a.cc");
        size_t damaged = 0;
        size_t inOneFile = 0;
        const auto compare = [&](const std::string& changed) {
            const Verdicts verdicts = verdictsOf(changed);
            if (verdicts._isChecked && verdicts._isInOneFile) {
                EXPECT_TRUE(verdicts._isRead && verdicts._files == 1u);
                ++inOneFile;
            } else if (verdicts._isChecked) {
                EXPECT_TRUE(!verdicts._isRead || verdicts._files > 1u);
            } else {
                EXPECT_FALSE(verdicts._isRead);
                ++damaged;
            }
            EXPECT_EQ(verdicts._isReadBehind, verdicts._isRead);
        };
        for (size_t at = head; at < text.size(); ++at) {
            SCOPED_TRACE(std::to_string(major) + ", " + std::to_string(at));
            compare(text.substr(0, at));
            for (const int value : {0, 1, 3, 4, 0x41, 0x61, 0x62, 0xff}) {
                std::string changed = text;
                changed[at] = static_cast<char>(value);
                compare(changed);
            }
        }
        EXPECT_GT(damaged, 100u);
        EXPECT_GT(inOneFile, 0u);
    }
}

TEST(GcnoFileTest, ContentIsEverythingButTheIdent)
{
    const auto keyOf = [](uint32_t ident, uint32_t checksum, uint32_t line) {
        GcovBuilder builder(12);
        builder.notesHead(1, "/build");
        builder.function(ident, 2, checksum, "f", 0, "a.cc", 1, 6);
        builder.blocks(3);
        builder.lines(2, "a.cc", {line});
        GcnoFile file(reinterpret_cast<const unsigned char*>(builder.bytes().data()),
                      builder.bytes().size());
        GcnoFunction function;
        EXPECT_EQ(file.open(), GcnoFile::Ok);
        EXPECT_TRUE(file.findFunction(function));
        EXPECT_EQ(function._ident, ident);
        ContentKey key;
        file.addContent(key);
        return key;
    };
    EXPECT_TRUE(keyOf(1, 2, 3) == keyOf(9, 2, 3));
    EXPECT_FALSE(keyOf(1, 2, 3) == keyOf(1, 3, 3));
    EXPECT_FALSE(keyOf(1, 2, 3) == keyOf(1, 2, 4));
}

TEST(GcnoFileTest, SecondNumberOfBlocksIsDamage)
{
    GcovBuilder builder(12);
    builder.notesHead(1, "/build");
    builder.function(1, 2, 3, "f", 0, "a.cc", 1, 6);
    builder.blocks(4);
    builder.arcs(2, {{3, 1}});
    builder.blocks(2);
    bool isDamaged = false;
    EXPECT_EQ(readAll(builder.bytes(), isDamaged), 0);
    EXPECT_TRUE(isDamaged);
}

TEST(GcnoFileTest, ArcsAndLinesOutsideTheBlocksAreDamage)
{
    for (int kind = 0; kind < 3; ++kind) {
        GcovBuilder builder(12);
        builder.notesHead(1, "/build");
        builder.function(1, 2, 3, "f", 0, "a.cc", 1, 6);
        builder.blocks(3);
        if (kind == 0) {
            builder.arcs(3, {{1, 0}});
        } else if (kind == 1) {
            builder.arcs(0, {{3, 0}});
        } else {
            builder.lines(3, "a.cc", {1});
        }
        bool isDamaged = false;
        EXPECT_EQ(readAll(builder.bytes(), isDamaged), 0) << kind;
        EXPECT_TRUE(isDamaged) << kind;
    }
}

TEST(GcnoFileTest, EveryCutIsToleratedAndLosesTheFunctionAtMost)
{
    for (const int major : {9, 12}) {
        const std::string sample = sampleNotes(major);
        for (size_t size = 0; size < sample.size(); ++size) {
            bool isDamaged = false;
            EXPECT_LE(readAll(sample.substr(0, size), isDamaged), 1) << size;
        }
    }
}

TEST(GcnoFileTest, EveryChangedByteIsTolerated)
{
    const std::string sample = sampleNotes(12);
    for (size_t at = 0; at < sample.size(); ++at) {
        for (const int flip : {0x01, 0x80, 0xff}) {
            std::string text = sample;
            text[at] = static_cast<char>(text[at] ^ flip);
            bool isDamaged = false;
            EXPECT_LE(readAll(text, isDamaged), 2) << at;
        }
    }
}

} // namespace
