// SPDX-License-Identifier: MIT
#include "qip/Support/qipMessages.h"

#include "tests/support/StdErr.h"

#include <gtest/gtest.h>

#include <string>

TEST(qipMessagesTest, WritesWhatIsLeftAtTheEnd)
{
    const StdErr err;
    {
        qipMessages messages;
        messages << " *** unknown tag " << 7 << '\n';
        EXPECT_EQ(err.text(), "");
    }
    EXPECT_EQ(err.text(), " *** unknown tag 7\n");
}

TEST(qipMessagesTest, FlushWritesAtOnce)
{
    const StdErr err;
    qipMessages messages;
    messages << "one" << std::flush << "two";
    EXPECT_EQ(err.text(), "one");
}

TEST(qipMessagesTest, ManyLinesAreWrittenInFewPiecesAndNoneIsLost)
{
    const StdErr err;
    const long before = qipMessages::writes();
    std::string expected;
    {
        qipMessages messages;
        for (int i = 0; i < 10000; ++i) {
            messages << " *** line " << i << '\n';
            expected += " *** line " + std::to_string(i) + "\n";
        }
    }
    EXPECT_EQ(err.text(), expected);
    EXPECT_LE(qipMessages::writes() - before, static_cast<long>(expected.size() / 8192 + 1));
}

TEST(qipMessagesTest, NothingIsWrittenForNothing)
{
    const long before = qipMessages::writes();
    {
        qipMessages messages;
        messages << std::flush;
    }
    EXPECT_EQ(qipMessages::writes(), before);
}
