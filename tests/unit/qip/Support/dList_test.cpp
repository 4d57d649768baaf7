#include "qip/Support/dList.h"

#include "qip/Support/dListIter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

class Cursor : public dListIter
{
public:
    explicit Cursor(dList& list) : dListIter(list) {}
    dLink* link() const { return _elem; }
    bool onSentinel() const { return _elem == nil(); }
};

std::string address(const void* p)
{
    std::ostringstream out;
    out << p;
    return out.str();
}

TEST(dLinkTest, FreshLinkIsARingOfItsOwn)
{
    dLink link;
    EXPECT_EQ(link._next, &link);
    EXPECT_EQ(link._prev, &link);
}

TEST(dLinkTest, JoinInsertsBefore)
{
    dLink a, b, c;
    a.join(&b);
    a.join(&c);
    EXPECT_EQ(a._next, &b);
    EXPECT_EQ(b._next, &c);
    EXPECT_EQ(c._next, &a);
    EXPECT_EQ(a._prev, &c);
}

TEST(dLinkTest, JoinOfNullDoesNothing)
{
    dLink a;
    a.join(nullptr);
    EXPECT_EQ(a._next, &a);
}

TEST(dLinkTest, WritesBothPointers)
{
    dLink a;
    std::ostringstream out;
    out << a;
    EXPECT_EQ(out.str(), "next:" + address(&a) + ", prev:" + address(&a));
}

TEST(dListTest, ChangesReturnTheNewLength)
{
    dList list;
    dLink a, b, c;
    EXPECT_EQ(list.append(&a), 1);
    EXPECT_EQ(list.prepend(&b), 2);
    EXPECT_EQ(list.join(&a, &c), 3);
    EXPECT_EQ(list.at(0), &b);
    EXPECT_EQ(list.at(1), &c);
    EXPECT_EQ(list.at(2), &a);
    EXPECT_EQ(list.remove(&c), 2);
    EXPECT_EQ(list.at(1), &a);
}

TEST(dListTest, RemoveLeavesTheLinksOwnPointers)
{
    dList list;
    dLink a, b;
    list.append(&a);
    list.append(&b);
    list.remove(&a);
    EXPECT_EQ(a._next, &b);
    EXPECT_EQ(list.first(), &b);
}

TEST(dListTest, RemovingAnotherListsLinkMiscountsSilently)
{
    dList list;
    dList other;
    dLink a, b, c;
    list.append(&a);
    other.append(&b);
    other.append(&c);
    EXPECT_EQ(list.remove(&c), 0);
    EXPECT_EQ(list.length(), 0);
    EXPECT_EQ(list.first(), &a);
    EXPECT_EQ(other.length(), 2);
    EXPECT_EQ(other.last(), &b);
}

TEST(dListTest, FindMeetsOnlyItsOwnLinks)
{
    dList list;
    dLink a, b;
    list.append(&a);
    EXPECT_EQ(list.find(&a), &a);
    EXPECT_EQ(list.find(&b), nullptr);
}

TEST(dListTest, EmptyListHasNoFirstLastOrAt)
{
    dList list;
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.last(), nullptr);
    EXPECT_EQ(list.at(0), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
    EXPECT_EQ(list.length(), 0);
}

TEST(dListTest, AtIsNullOutsideTheList)
{
    dList list;
    dLink a;
    list.append(&a);
    EXPECT_EQ(list.at(-1), nullptr);
    EXPECT_EQ(list.at(1), nullptr);
    EXPECT_EQ(list.at(0), &a);
}

TEST(dListTest, WritesSentinelAndElements)
{
    dList list;
    dLink a, b;
    list.append(&a);
    list.append(&b);
    std::ostringstream out;
    out << list;
    const std::string nil = address(a._prev);
    EXPECT_EQ(out.str(), "list: nil(" + nil + "):{next:" + address(&a) + ", prev:" + address(&b) +
                             "}, 0(" + address(&a) + "):{next:" + address(&b) + ", prev:" + nil +
                             "}, 1(" + address(&b) + "):{next:" + nil + ", prev:" + address(&a) +
                             "}");
}

TEST(dListIterTest, IndexCountsFromTheSentinel)
{
    dList list;
    dLink a, b;
    list.append(&a);
    list.append(&b);
    Cursor cursor(list);
    EXPECT_EQ(cursor.index(), -1);
    cursor.index(0);
    EXPECT_EQ(cursor.index(), 0);
    cursor.index(1);
    EXPECT_EQ(cursor.index(), 1);
}

TEST(dListIterTest, IndexGoesRoundTheRing)
{
    dList list;
    dLink a, b;
    list.append(&a);
    list.append(&b);
    Cursor cursor(list);
    cursor.index(-5);
    EXPECT_EQ(cursor.link(), &a);
    cursor.index(2);
    EXPECT_TRUE(cursor.onSentinel());
    cursor.index(3);
    EXPECT_EQ(cursor.link(), &a);
    cursor.index(7);
    EXPECT_EQ(cursor.link(), &b);
}

TEST(dListIterTest, IndexOfAnEmptyListIsTheSentinel)
{
    dList list;
    Cursor cursor(list);
    cursor.index(0);
    EXPECT_TRUE(cursor.onSentinel());
    cursor.index(4);
    EXPECT_TRUE(cursor.onSentinel());
}

TEST(dListTest, AbandonEmptiesTheListAndLeavesItsLinks)
{
    dList list;
    dLink a;
    dLink b;
    list.append(&a);
    list.append(&b);
    list.abandon();
    EXPECT_EQ(list.length(), 0);
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.last(), nullptr);
    EXPECT_EQ(a._next, &b);
    EXPECT_EQ(list.append(&b), 1);
    EXPECT_EQ(list.first(), &b);
    EXPECT_EQ(list.last(), &b);
    list.abandon();
    list.abandon();
    EXPECT_EQ(list.length(), 0);
}

} // namespace
