#include "zem/Rows/RowGroups.h"

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

TEST_F(RowGroupsTest, AGroupWithoutARowIsLeftOut)
{
    add("a", 1, 1, 1);
    const ZEMRptTable table = _groups.table([](const char*) -> ZEMView* { return nullptr; });
    EXPECT_EQ(table._nItems, 0);
    ZEMRptTable(table).deleteRows();
}

} // namespace
