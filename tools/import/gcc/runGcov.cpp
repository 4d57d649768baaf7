// SPDX-License-Identifier: MIT
#include "tools/import/gcc/runGcov.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A folder of its own where notes and counters stand side by side, which gcov asks for.
class UnitFolder
{
public:
    explicit UnitFolder(const GccUnitFiles& files)
    {
        std::error_code failure;
        const std::filesystem::path base = std::filesystem::temp_directory_path(failure);
        std::string pattern = (base / "zem-import-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            return;
        }
        _path = pattern;
        _isGood = symlink(files._notes.c_str(), (_path + "/unit.gcno").c_str()) == 0 &&
                  (files._counters.empty() ||
                   symlink(files._counters.c_str(), (_path + "/unit.gcda").c_str()) == 0);
    }
    ~UnitFolder()
    {
        if (!_path.empty()) {
            std::error_code ignored;
            std::filesystem::remove_all(_path, ignored);
        }
    }
    UnitFolder(const UnitFolder&) = delete;
    UnitFolder& operator=(const UnitFolder&) = delete;

    bool isGood() const { return _isGood; }
    const std::string& path() const { return _path; }

private:
    std::string _path;
    bool _isGood = false;
};

bool readAll(int fd, std::string& text)
{
    char piece[65536];
    for (;;) {
        const ssize_t got = read(fd, piece, sizeof(piece));
        if (got == 0) {
            return true;
        }
        if (got > 0) {
            text.append(piece, static_cast<size_t>(got));
        } else if (errno != EINTR) {
            return false;
        }
    }
}

} // namespace

bool runGcov(const char* gcov, const GccUnitFiles& files, std::string& json)
{
    const UnitFolder folder(files);
    int ends[2];
    if (!folder.isGood() || pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.path().c_str());
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string words[] = {gcov, "--json-format", "--stdout", "unit.gcno"};
    char* vector[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    pid_t child = 0;
    const bool isStarted = posix_spawnp(&child, gcov, &actions, nullptr, vector, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    bool isRead = isStarted && readAll(ends[0], json);
    close(ends[0]);
    int status = -1;
    if (isStarted) {
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
    }
    return isRead && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
