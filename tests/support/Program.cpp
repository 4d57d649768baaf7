// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include "tests/support/TempDir.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void redirect(const std::string& path, int flags, int fd)
{
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, fd) < 0) {
        _exit(126);
    }
    close(file);
}

} // namespace

ProgramResult runProgram(const std::vector<std::string>& words)
{
    const TempDir dir;
    const std::string out = dir.path("out");
    const std::string err = dir.path("err");
    std::vector<char*> argv;
    for (const std::string& word : words) {
        argv.push_back(const_cast<char*>(word.c_str()));
    }
    argv.push_back(nullptr);

    const pid_t pid = fork();
    if (pid == 0) {
        redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        redirect(out, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    while (pid > 0 && waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    ProgramResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.out = TempDir::read(out);
    result.err = TempDir::read(err);
    return result;
}

ProgramResult runProgramWithOutput(const std::string& output, const std::vector<std::string>& words)
{
    std::vector<std::string> shell = {"sh", "-c", "exec \"$0\" \"$@\" " + output};
    shell.insert(shell.end(), words.begin(), words.end());
    return runProgram(shell);
}

std::string builtProgram(const std::string& name)
{
    return std::string(ZEM_BINARY_DIR) + "/bin/" + name;
}
