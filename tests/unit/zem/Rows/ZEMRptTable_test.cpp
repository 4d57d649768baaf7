#include "zem/Rows/ZEMRptTable.h"

#include "zem/Rows/ZEMClassView.h"
#include "zem/Rows/ZEMFuncView.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

ZEMFuncView* newRow(const char* path, const char* function, int covered, int total, int hits)
{
    auto* view = new ZEMFuncView;
    view->filename(path);
    view->funcname(function);
    view->_covBlk = covered;
    view->_totBlk = total;
    view->_hits = hits;
    view->setLabel();
    return view;
}

class ZEMRptTableTest : public ::testing::Test
{
protected:
    ~ZEMRptTableTest() override { _table.deleteRows(); }

    void fill(const std::vector<ZEMView*>& rows)
    {
        _table._nItems = static_cast<int>(rows.size());
        _table._view = new ZEMView*[rows.size()];
        for (size_t i = 0; i < rows.size(); ++i) {
            _table._view[i] = rows[i];
        }
    }

    // Three functions of which each key makes another order.
    void fillThree()
    {
        fill({newRow("b/y.c", "beta", 1, 3, 5), newRow("c/x.c", "alpha", 2, 2, 1),
              newRow("a/z.c", "gamma", 0, 7, 9)});
    }

    std::string order()
    {
        std::string labels;
        for (int i = 0; i < _table._nItems; ++i) {
            labels += std::string(i == 0 ? "" : " ") + _table._view[i]->_label;
        }
        return labels;
    }

    std::string orderBy(const char* keys)
    {
        _table.sort(keys);
        return order();
    }

    ZEMRptTable _table;
};

TEST_F(ZEMRptTableTest, StartsEmpty)
{
    EXPECT_EQ(_table._view, nullptr);
    EXPECT_EQ(_table._nItems, 0);
    EXPECT_EQ(_table.longestLabel(), 0);
    EXPECT_EQ(_table.maxBlocks(), 0);
}

TEST_F(ZEMRptTableTest, SortingAnEmptyTableDoesNothing)
{
    _table.sort("d");
    EXPECT_EQ(_table._view, nullptr);
}

TEST_F(ZEMRptTableTest, CopiesShowTheSameRows)
{
    fillThree();
    {
        const ZEMRptTable copy(_table);
        EXPECT_EQ(copy._view, _table._view);
        EXPECT_EQ(copy._nItems, 3);
    }
    EXPECT_EQ(order(), "beta alpha gamma");
}

TEST_F(ZEMRptTableTest, DeleteRowsLeavesAnEmptyTable)
{
    fillThree();
    _table.deleteRows();
    EXPECT_EQ(_table._view, nullptr);
    EXPECT_EQ(_table._nItems, 0);
    _table.deleteRows();
}

TEST_F(ZEMRptTableTest, EachKeyOrdersAscending)
{
    fillThree();
    EXPECT_EQ(orderBy("d"), "gamma beta alpha");
    EXPECT_EQ(orderBy("F"), "alpha beta gamma");
    EXPECT_EQ(orderBy("f"), "alpha beta gamma");
    EXPECT_EQ(orderBy("%"), "gamma beta alpha");
    EXPECT_EQ(orderBy("#"), "alpha beta gamma");
    EXPECT_EQ(orderBy("b"), "alpha beta gamma");
}

TEST_F(ZEMRptTableTest, NIsFAgain)
{
    fillThree();
    const std::string byF = orderBy("f");
    orderBy("d");
    EXPECT_EQ(orderBy("n"), byF);
}

TEST_F(ZEMRptTableTest, SecondKeyBreaksTies)
{
    fill({newRow("a/x.c", "two", 0, 2, 0), newRow("a/x.c", "one", 0, 2, 0),
          newRow("a/x.c", "big", 0, 9, 0)});
    EXPECT_EQ(orderBy("bf"), "one two big");
    EXPECT_EQ(orderBy("Fdf"), "big one two");
}

TEST_F(ZEMRptTableTest, UnknownKeyEndsTheComparison)
{
    const ZEMFuncView* a = newRow("a/y.c", "f", 0, 1, 0);
    const ZEMFuncView* b = newRow("a/x.c", "f", 0, 1, 0);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "d?F"), 0);
    EXPECT_GT(ZEMRptTable::compareViews(a, b, "dF"), 0);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "?F"), 0);
    delete a;
    delete b;
}

TEST_F(ZEMRptTableTest, NullAndEmptyKeysMakeRowsEqual)
{
    const ZEMFuncView* a = newRow("a/y.c", "f", 0, 1, 0);
    const ZEMFuncView* b = newRow("b/x.c", "g", 1, 2, 3);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, nullptr), 0);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, ""), 0);
    delete a;
    delete b;
}

TEST_F(ZEMRptTableTest, WithoutKeysTheRowsStayAsTheyAre)
{
    fillThree();
    const std::string before = order();
    EXPECT_EQ(orderBy(""), before);
    EXPECT_EQ(orderBy(nullptr), before);
    EXPECT_EQ(_table._nItems, 3);
}

TEST_F(ZEMRptTableTest, NumbersCompareByDifference)
{
    const ZEMFuncView* a = newRow("a", "f", 1, 4, 10);
    const ZEMFuncView* b = newRow("a", "f", 1, 2, 3);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "#"), 7);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "b"), 2);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "%"), -25);
    delete a;
    delete b;
}

TEST_F(ZEMRptTableTest, DifferencesDoNotOverflow)
{
    const ZEMFuncView* low = newRow("a", "f", INT_MIN, 1, INT_MIN);
    const ZEMFuncView* high = newRow("a", "f", INT_MAX, 1, INT_MAX);
    EXPECT_LT(ZEMRptTable::compareViews(low, high, "#"), 0);
    EXPECT_GT(ZEMRptTable::compareViews(high, low, "#"), 0);
    EXPECT_LT(ZEMRptTable::compareViews(low, high, "%"), 0);
    delete low;
    delete high;
}

TEST_F(ZEMRptTableTest, PercentagesCompareTruncated)
{
    const ZEMFuncView* a = newRow("a", "f", 2, 3, 0);
    const ZEMFuncView* b = newRow("a", "f", 669, 1000, 0);
    EXPECT_EQ(ZEMRptTable::compareViews(a, b, "%"), 0);
    delete a;
    delete b;
}

TEST_F(ZEMRptTableTest, RowsWithoutNamesOrBlocksCanBeSortedByAnyKey)
{
    fill({new ZEMClassView, new ZEMClassView, new ZEMDirectoryView, new ZEMFuncView});
    _table.sort("dFfn%#b");
    EXPECT_EQ(_table._nItems, 4);
}

TEST_F(ZEMRptTableTest, ClassRowsAreEqualByFileAndFunction)
{
    ZEMClassView a;
    a.filename("src/a.c");
    a.classname("A");
    ZEMClassView b;
    b.filename("src/b.c");
    b.classname("B");
    b._totBlk = 1;
    EXPECT_EQ(ZEMRptTable::compareViews(&a, &b, "Ffn"), 0);
    EXPECT_LT(ZEMRptTable::compareViews(&a, &b, "Ffb"), 0);
}

TEST_F(ZEMRptTableTest, SortKeyListStaysTheKeysThatWereGiven)
{
    fillThree();
    static const char keys[] = "d";
    _table.sort(keys);
    EXPECT_EQ(ZEMRptTable::sortKeyList, keys);
}

TEST_F(ZEMRptTableTest, LongestLabelAndMostBlocks)
{
    fillThree();
    EXPECT_EQ(_table.longestLabel(), 5);
    EXPECT_EQ(_table.maxBlocks(), 7);
}

TEST_F(ZEMRptTableTest, RowsWithoutLabelHaveNoLength)
{
    fill({new ZEMDirectoryView, newRow("a", "ab", 0, 0, 0)});
    EXPECT_EQ(_table.longestLabel(), 2);
    EXPECT_EQ(_table.maxBlocks(), 0);
}

} // namespace
