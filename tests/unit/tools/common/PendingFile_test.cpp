// SPDX-License-Identifier: MIT
#include "tools/common/PendingFile.h"

#include "tests/support/TempDir.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class PendingFileTest : public ::testing::Test
{
protected:
    size_t entries() const
    {
        return static_cast<size_t>(
            std::distance(fs::directory_iterator(_dir.path()), fs::directory_iterator()));
    }

    // Ends a process that has a pending file by `signal`. Returns its status for waitpid().
    int endBySignal(int signal)
    {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        const pid_t pid = fork();
        if (pid == 0) {
            PendingFile::removeOnSignals();
            PendingFile file;
            PendingFile other;
            const bool isGood = file.create(_dir.path()) && other.create(_dir.path());
            (void)!::write(ready[1], &isGood, 1);
            for (;;) {
                pause();
            }
        }
        char isGood = 0;
        EXPECT_EQ(::read(ready[0], &isGood, 1), 1);
        EXPECT_EQ(isGood, 1);
        close(ready[0]);
        close(ready[1]);
        EXPECT_EQ(entries(), 2u);
        int status = 0;
        kill(pid, signal);
        EXPECT_EQ(waitpid(pid, &status, 0), pid);
        return status;
    }

    const TempDir _dir;
    PendingFile _file;
};

TEST_F(PendingFileTest, TakesItsNameWhenItIsComplete)
{
    _dir.write("a", "old");
    ASSERT_TRUE(_file.create(_dir.path()));
    ASSERT_TRUE(_file.write("new "));
    ASSERT_TRUE(_file.write("text"));
    EXPECT_EQ(TempDir::read(_file.temporary()), "new text");
    EXPECT_EQ(TempDir::read(_dir.path("a")), "old");
    ASSERT_TRUE(_file.sync());
    ASSERT_TRUE(_file.commit(_dir.path("a")));
    EXPECT_EQ(TempDir::read(_dir.path("a")), "new text");
    EXPECT_EQ(entries(), 1u);
}

TEST_F(PendingFileTest, GoesWithItsObject)
{
    {
        PendingFile file;
        ASSERT_TRUE(file.create(_dir.path()));
        EXPECT_EQ(entries(), 1u);
        errno = EIO;
    }
    EXPECT_EQ(entries(), 0u);
    EXPECT_EQ(errno, EIO); // what failed before is what is told
}

TEST_F(PendingFileTest, CommitThatFailsLeavesTheOldFile)
{
    _dir.write("a/b", "");
    ASSERT_TRUE(_file.create(_dir.path()));
    EXPECT_FALSE(_file.commit(_dir.path("a")));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_TRUE(fs::exists(_dir.path("a/b")));
}

TEST_F(PendingFileTest, FolderThatIsNotThereIsTold)
{
    EXPECT_FALSE(_file.create(_dir.path("none")));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(PendingFileTest, FilesOfDeadProgramsAreRemovedAndThoseOfLiveOnesStay)
{
    EXPECT_TRUE(WIFSIGNALED(endBySignal(SIGKILL)));
    EXPECT_EQ(entries(), 2u);
    ASSERT_TRUE(_file.create(_dir.path()));
    _dir.write("other.new", "");
    _dir.write(".zem-import-other", "");
    fs::create_directory(_dir.path(".zem-import-folder.new"));
    PendingFile::removeDead(_dir.path());
    EXPECT_EQ(entries(), 4u);
    EXPECT_TRUE(fs::exists(_file.temporary()));
    PendingFile::removeDead(_dir.path("none"));
}

TEST_F(PendingFileTest, SignalsThatEndTheProgramRemoveItsFiles)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        const int status = endBySignal(signal);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(entries(), 0u);
    }
}

TEST_F(PendingFileTest, SignalThatIsIgnoredStaysSo)
{
    std::signal(SIGHUP, SIG_IGN);
    PendingFile::removeOnSignals();
    ASSERT_TRUE(_file.create(_dir.path()));
    raise(SIGHUP);
    EXPECT_EQ(entries(), 1u);
}

TEST_F(PendingFileTest, FilePastTheLimitIsAFailedWrite)
{
    const pid_t pid = fork();
    if (pid == 0) {
        PendingFile::removeOnSignals();
        const rlimit sizes = {1, 1};
        const bool isReady = _file.create(_dir.path()) && setrlimit(RLIMIT_FSIZE, &sizes) == 0;
        const int file = ::open(_file.temporary().c_str(), O_WRONLY);
        const bool isFailed =
            ::write(file, "a", 1) == 1 && ::write(file, "b", 1) == -1 && errno == EFBIG;
        _exit(isReady && isFailed ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status)) << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(PendingFileTest, ManyFilesMayWaitAtOnce)
{
    PendingFile files[9];
    for (PendingFile& file : files) {
        ASSERT_TRUE(file.create(_dir.path()));
    }
    EXPECT_EQ(entries(), 9u);
    ASSERT_TRUE(files[0].commit(_dir.path("a")));
    EXPECT_EQ(entries(), 9u);
}

} // namespace
