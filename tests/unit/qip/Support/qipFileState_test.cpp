#include "qip/Support/qipFileState.h"

#include "tests/support/TempDir.h"

#include <atomic>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

class qipFileStateTest : public ::testing::Test
{
protected:
    qipFileStateTest() : _path(_dir.write("file", "one two")), _fd(open(_path.c_str(), O_RDWR)) {}
    ~qipFileStateTest() override { close(_fd); }

    bool write(const char* bytes, size_t size, off_t at) const
    {
        return pwrite(_fd, bytes, size, at) == static_cast<ssize_t>(size);
    }

    // Sets the time of the last write, not that of the last change.
    void setTime(time_t seconds) const
    {
        const timespec times[2] = {{seconds, 0}, {seconds, 0}};
        ASSERT_EQ(futimens(_fd, times), 0);
    }

    TempDir _dir;
    std::string _path;
    int _fd;
    qipFileState _state;
};

TEST_F(qipFileStateTest, AFileThatNobodyTouchesIsUnchanged)
{
    ASSERT_EQ(_state.watch(_fd), nullptr);
    EXPECT_EQ(_state.size(), 7);
    EXPECT_EQ(_state.change(_fd), nullptr);
}

// Written, looked at and written in one go: the times of many a file system do not tell these two
// writes apart.
TEST_F(qipFileStateTest, AWriteRightBehindAnotherIsSeen)
{
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(write("one two", 7, 0));
        ASSERT_EQ(_state.watch(_fd), nullptr);
        ASSERT_TRUE(write("X", 1, 3));
        ASSERT_STREQ(_state.change(_fd), "It was written to while it was read") << i;
    }
}

// As a file does that is cut and completed again.
TEST_F(qipFileStateTest, ASizeThatWasOtherMeanwhileIsSeen)
{
    ASSERT_EQ(_state.watch(_fd), nullptr);
    ASSERT_EQ(ftruncate(_fd, 3), 0);
    EXPECT_NE(_state.change(_fd), nullptr);
    ASSERT_TRUE(write(" two", 4, 3));
    EXPECT_NE(_state.change(_fd), nullptr);
}

TEST_F(qipFileStateTest, AWriteWithItsTimeSetBackIsSeen)
{
    setTime(100);
    ASSERT_EQ(_state.watch(_fd), nullptr);
    ASSERT_TRUE(write("X", 1, 3));
    setTime(100);
    EXPECT_NE(_state.change(_fd), nullptr);
}

TEST_F(qipFileStateTest, ANameThatComesOrGoesIsNoWrite)
{
    ASSERT_EQ(_state.watch(_fd), nullptr);
    const std::string other = _dir.write("other", "something else");
    ASSERT_EQ(rename(other.c_str(), _path.c_str()), 0);
    EXPECT_EQ(_state.change(_fd), nullptr);
}

TEST_F(qipFileStateTest, AFileThatIsWrittenToAllTheTimeIsRefused)
{
    std::atomic<bool> isOver{false};
    std::thread writer([this, &isOver] {
        while (!isOver) {
            (void)write("X", 1, 3);
        }
    });
    // On a busy machine the writer may have to wait now and then.
    const char* problem = nullptr;
    for (int i = 0; i < 5000 && problem == nullptr; ++i) {
        problem = _state.watch(_fd);
        usleep(1000);
    }
    EXPECT_STREQ(problem, "It is being written to");
    isOver = true;
    writer.join();
}

// The clock of another computer, or one that was set back.
TEST_F(qipFileStateTest, ATimeInTheFutureIsNoReasonToWaitForIt)
{
    setTime(time(nullptr) + 100 * 365 * 24 * 3600L);
    EXPECT_EQ(_state.watch(_fd), nullptr);
    EXPECT_EQ(_state.change(_fd), nullptr);
}

TEST_F(qipFileStateTest, WithoutAFileThereIsTheSystemsReason)
{
    EXPECT_STREQ(_state.watch(-1), "Bad file descriptor");
    EXPECT_STREQ(_state.change(-1), "Bad file descriptor");
}

} // namespace
