#include "zem/Rows/RowGroups.h"

#include "tests/support/FailingNew.h"
#include "zem/Rows/ZEMClassView.h"
#include "zem/Rows/ZEMView.h"

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <string>

namespace {

ZEMView* newClassRow(const char* name)
{
    auto* row = new ZEMClassView;
    row->classname(name);
    return row;
}

std::string rows(const RowGroups& groups)
{
    std::ostringstream out;
    ZEMRptTable table = groups.table(newClassRow);
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        out << row._label << " " << row._covBlk << "/" << row._totBlk << " " << row._hits << "\n";
    }
    table.deleteRows();
    return out.str();
}

class RowGroupsTest : public ::testing::Test
{
protected:
    void add(const char* name, int total, int covered, int hits)
    {
        _row.setCounts(nullptr, total, covered, hits);
        _groups.add(name, _row);
    }

    ZEMClassView _row;
    RowGroups _groups;
};

TEST_F(RowGroupsTest, NoRowsMakeAnEmptyTable)
{
    EXPECT_EQ(rows(_groups), "");
    EXPECT_EQ(_groups.table(newClassRow)._view, nullptr);
}

TEST_F(RowGroupsTest, RowsOfOneNameAreSummedAndTheLastMetComesFirst)
{
    add("a", 10, 4, 7);
    add("b", 1, 0, 0);
    add("a", 5, 5, 100);
    EXPECT_EQ(rows(_groups), "b 0/1 0\na 9/15 107\n");
}

TEST_F(RowGroupsTest, SumsStopAtWhatARowHolds)
{
    add("a", INT_MAX, INT_MAX, INT_MAX);
    add("a", INT_MAX, INT_MAX, 1);
    EXPECT_EQ(rows(_groups), "a 2147483647/2147483647 2147483647\n");
}

TEST_F(RowGroupsTest, AGroupWithoutARowLeavesNoTable)
{
    add("a", 1, 1, 1);
    add("b", 1, 1, 1);
    const ZEMRptTable table = _groups.table(
        [](const char* name) { return name[0] == 'b' ? newClassRow(name) : nullptr; });
    EXPECT_FALSE(table.isWhole());
    EXPECT_EQ(table._nItems, 0);
    EXPECT_EQ(table._view, nullptr);
}

TEST_F(RowGroupsTest, ARowWithoutALabelLeavesNoTable)
{
    add("a", 1, 1, 1);
    const ZEMRptTable table =
        _groups.table([](const char*) -> ZEMView* { return new ZEMClassView; });
    EXPECT_FALSE(table.isWhole());
    EXPECT_EQ(table._nItems, 0);
}

TEST_F(RowGroupsTest, SurvivesAGroupThatCouldNotBeAdded)
{
    for (const FailingNew::Mode mode : {FailingNew::Once, FailingNew::FromThen}) {
        const auto addAll = [](RowGroups& groups, const ZEMView& row) {
            for (const char* name : {"a", "b", "a", "c", "b", "a"}) {
                groups.add(name, row);
            }
        };
        long n = 1;
        for (;; ++n) {
            RowGroups groups;
            if (!FailingNew::run(n, mode, [&] { addAll(groups, _row); })) {
                break;
            }
            EXPECT_FALSE(groups.table(newClassRow).isWhole()) << n;
        }
        EXPECT_GT(n, 3);
    }
}

} // namespace
