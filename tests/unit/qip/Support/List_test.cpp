#include "qip/Support/List.h"

#include "qip/Support/ListIterator.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

int a = 1;
int b = 2;
int c = 3;

TEST(ListTest, AppendAndPrependReturnTheLength)
{
    List<int*> list;
    EXPECT_EQ(list.append(&a), 1);
    EXPECT_EQ(list.append(&b), 2);
    EXPECT_EQ(list.prepend(&c), 3);
    EXPECT_EQ(list.first(), &c);
    EXPECT_EQ(list.last(), &b);
    EXPECT_EQ(list.length(), 3);
}

TEST(ListTest, EmptyListHasNullEnds)
{
    List<int*> list;
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.last(), nullptr);
}

TEST(ListTest, RemoveTakesOnlyTheFirstMatch)
{
    List<int*> list;
    list.append(&a);
    list.append(&b);
    list.append(&a);
    EXPECT_EQ(list.remove(&a), 0);
    EXPECT_EQ(list.length(), 2);
    EXPECT_EQ(list.first(), &b);
    EXPECT_EQ(list.last(), &a);
}

TEST(ListTest, RemoveOfAStrangerChangesNothing)
{
    List<int*> list;
    list.append(&a);
    EXPECT_EQ(list.remove(&b), -1);
    EXPECT_EQ(list.length(), 1);
}

TEST(ListTest, UntypedRemoveReturnsTheLengthAndFreesNothing)
{
    List<int*> list;
    list.append(&a);
    dLinkT<int*> link(&b);
    EXPECT_EQ(list.append(static_cast<dLink*>(&link)), 2);
    EXPECT_EQ(list.remove(static_cast<dLink*>(&link)), 1);
    EXPECT_EQ(link._datum, &b);
}

TEST(ListTest, GoesWithoutItsObjects)
{
    auto* object = new int(7);
    {
        List<int*> list;
        list.append(object);
        list.prepend(object);
    }
    EXPECT_EQ(*object, 7);
    delete object;
}

TEST(ListTest, CannotBeCopied)
{
    EXPECT_FALSE(std::is_copy_constructible<List<int*>>::value);
    EXPECT_FALSE(std::is_copy_assignable<List<int*>>::value);
}

TEST(ListIteratorTest, NextWalksToTheEnd)
{
    List<int*> list;
    list.append(&a);
    list.append(&b);
    ListIterator<int*> it(list);
    EXPECT_EQ(it.current(), nullptr);
    EXPECT_EQ(it.next(), &a);
    EXPECT_EQ(it.current(), &a);
    EXPECT_EQ(it.next(), &b);
    EXPECT_EQ(it.next(), nullptr);
    EXPECT_EQ(it.index(), -1);
    it.next();
    it.reset();
    EXPECT_EQ(it.next(), &a);
}

TEST(ListIteratorTest, FindStaysOnTheLink)
{
    List<int*> list;
    list.append(&a);
    list.append(&b);
    ListIterator<int*> it(list);
    EXPECT_EQ(it.find(&b), 1);
    EXPECT_EQ(it.current(), &b);
}

TEST(ListIteratorTest, FindMeetsTheFirstOfTwo)
{
    List<int*> list;
    list.append(&a);
    list.append(&b);
    list.append(&b);
    ListIterator<int*> it(list);
    it.index(2);
    EXPECT_EQ(it.find(&b), 1);
    EXPECT_EQ(it.index(), 1);
}

TEST(ListIteratorTest, FindOfAStrangerGoesToTheFirst)
{
    List<int*> list;
    list.append(&a);
    list.append(&b);
    ListIterator<int*> it(list);
    EXPECT_EQ(it.find(&c), -1);
    EXPECT_EQ(it.current(), &a);
}

TEST(ListIteratorTest, FindInAnEmptyListIsOnTheSentinel)
{
    List<int*> list;
    ListIterator<int*> it(list);
    EXPECT_EQ(it.find(&a), -1);
    EXPECT_EQ(it.index(), -1);
}

} // namespace
