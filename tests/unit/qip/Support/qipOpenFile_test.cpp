#include "qip/Support/qipOpenFile.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

class qipOpenFileTest : public ::testing::Test
{
protected:
    // 0 when the file opens and is closed with a program that this one starts, else errno.
    int reason(const std::string& path)
    {
        errno = 0;
        const int fd = qipOpenFile(path.c_str(), _status);
        if (fd < 0) {
            EXPECT_EQ(fd, -1);
            return errno;
        }
        EXPECT_NE(fcntl(fd, F_GETFD) & FD_CLOEXEC, 0);
        ::close(fd);
        return 0;
    }

    TempDir _dir;
    struct stat _status = {};
};

TEST_F(qipOpenFileTest, OpensFilesAndDirectories)
{
    EXPECT_EQ(reason(_dir.write("file", "12345")), 0);
    EXPECT_EQ(_status.st_size, 5);
    EXPECT_EQ(reason(_dir.path()), 0);
    EXPECT_TRUE(S_ISDIR(_status.st_mode));
}

// A program may be started without a standard input.
TEST_F(qipOpenFileTest, FileMayHaveTheFirstNumber)
{
    const std::string path = _dir.write("file", "12345");
    ::close(STDIN_FILENO);
    EXPECT_EQ(qipOpenFile(path.c_str(), _status), STDIN_FILENO);
    EXPECT_EQ(_status.st_size, 5);
}

TEST_F(qipOpenFileTest, GivesTheReasonForWhatCannotBeOpened)
{
    EXPECT_EQ(reason(_dir.path("none")), ENOENT);
    EXPECT_EQ(reason(_dir.write("file", "") + "/below"), ENOTDIR);
}

TEST_F(qipOpenFileTest, PipesAndDevicesAreRefusedAtOnce)
{
    ASSERT_EQ(mkfifo(_dir.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(reason(_dir.path("pipe")), EOPNOTSUPP);
    EXPECT_EQ(reason("/dev/null"), EOPNOTSUPP);
}

} // namespace
