#include "zem/Repository/SourceIndex.h"

#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"
#include "zem/Data/ZEMFileRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

std::unique_ptr<ZEMFileRecord> source(const std::string& path, int nBlocks)
{
    MapFunc func;
    func.name = "f";
    func.blocks.assign(static_cast<size_t>(nBlocks), {1, 1});
    MemoryStream stream(mapPayload({path, {func}}));
    auto file = std::make_unique<ZEMFileRecord>();
    EXPECT_EQ(file->read(stream.get()), 0);
    return file;
}

std::vector<uint32_t> hits(ZEMFileRecord& file)
{
    std::vector<uint32_t> result;
    for (size_t i = 0; i < file.placedBlocks(); ++i) {
        result.push_back(file.blocks()[i]._nHits);
    }
    return result;
}

size_t add(SourceIndex& index, long number, const std::vector<uint32_t>& counts)
{
    return index.addHits(number, counts.data(), counts.size());
}

TEST(SourceIndexTest, NumbersFilesInTheOrderAdded)
{
    const auto a = source("a.c", 2);
    const auto b = source("b.c", 3);
    SourceIndex index;
    EXPECT_EQ(index.find("a.c"), -1);
    EXPECT_EQ(index.add(*a), PathIndex::Added);
    EXPECT_EQ(index.add(*b), PathIndex::Added);
    EXPECT_EQ(index.find("a.c"), 0);
    EXPECT_EQ(index.find("b.c"), 1);
    EXPECT_STREQ(index.path(1), "b.c");
    EXPECT_EQ(index.placedBlocks(1), 3u);
    EXPECT_EQ(index.statedBlocks(1), b->_nBlocks);
}

TEST(SourceIndexTest, KeepsTheFirstOfAPath)
{
    const auto first = source("a.c", 2);
    const auto second = source("a.c", 9);
    SourceIndex index;
    EXPECT_EQ(index.add(*first), PathIndex::Added);
    EXPECT_EQ(index.add(*second), PathIndex::Known);
    EXPECT_EQ(index.placedBlocks(index.find("a.c")), 2u);
}

TEST(SourceIndexTest, AFileWithoutNameHasTheEmptyPath)
{
    ZEMFileRecord nameless;
    SourceIndex index;
    EXPECT_EQ(index.add(nameless), PathIndex::Added);
    EXPECT_EQ(index.find(""), 0);
    EXPECT_EQ(add(index, 0, {1, 2}), 0u);
    index.settle();
}

TEST(SourceIndexTest, SumsReachTheBlocksWhenSettled)
{
    const auto a = source("a.c", 3);
    const auto b = source("b.c", 1);
    SourceIndex index;
    index.add(*a);
    index.add(*b);
    EXPECT_EQ(add(index, 0, {1, 0, 5}), 2u);
    EXPECT_EQ(add(index, 0, {1, 0, 0}), 1u);
    EXPECT_EQ(add(index, 1, {0}), 0u);
    EXPECT_EQ(hits(*a), (std::vector<uint32_t>{0, 0, 0}));
    index.settle(0);
    EXPECT_EQ(hits(*a), (std::vector<uint32_t>{2, 0, 5}));
    add(index, 1, {7});
    index.settle();
    EXPECT_EQ(hits(*a), (std::vector<uint32_t>{2, 0, 5}));
    EXPECT_EQ(hits(*b), (std::vector<uint32_t>{7}));
    add(index, 0, {1, 1, 1});
    index.settle();
    index.settle();
    EXPECT_EQ(hits(*a), (std::vector<uint32_t>{3, 1, 6}));
}

TEST(SourceIndexTest, CountsOfFewerOrMoreBlocks)
{
    const auto a = source("a.c", 3);
    SourceIndex index;
    index.add(*a);
    EXPECT_EQ(add(index, 0, {1, 1, 1, 1, 1}), 3u);
    EXPECT_EQ(add(index, 0, {4}), 1u);
    EXPECT_EQ(index.addHits(0, nullptr, 0), 0u);
    index.settle();
    EXPECT_EQ(hits(*a), (std::vector<uint32_t>{5, 1, 1}));
}

TEST(SourceIndexTest, SumsStayAtTheLargestValue)
{
    const auto a = source("a.c", 40); // enough for a vector and a rest
    SourceIndex index;
    index.add(*a);
    add(index, 0, std::vector<uint32_t>(40, UINT32_MAX - 1));
    add(index, 0, std::vector<uint32_t>(40, 1));
    add(index, 0, std::vector<uint32_t>(40, 1));
    index.settle();
    EXPECT_EQ(hits(*a), std::vector<uint32_t>(40, UINT32_MAX));
    add(index, 0, std::vector<uint32_t>(40, 5));
    index.settle();
    EXPECT_EQ(hits(*a), std::vector<uint32_t>(40, UINT32_MAX));
}

} // namespace
