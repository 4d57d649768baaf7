// SPDX-License-Identifier: MIT
#include "tools/import/ToolRun.h"

#include "tools/import/CleanEnd.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr size_t Piece = 256 * 1024;     // bytes
constexpr size_t MostComplaints = 65536; // bytes

// Returns whether all was taken.
bool pass(int fd, ToolRun::Receiver& receiver)
{
    std::vector<char> piece(Piece);
    for (;;) {
        const ssize_t got = read(fd, piece.data(), piece.size());
        if (got == 0) {
            return true;
        }
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0 || !receiver.receive(piece.data(), static_cast<size_t>(got))) {
            return false;
        }
    }
}

std::string lastLine(std::FILE* file)
{
    std::rewind(file);
    std::string text(MostComplaints, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    text.erase(text.find_last_not_of(" \n") + 1);
    const size_t start = text.rfind('\n');
    return start == std::string::npos ? text : text.substr(start + 1);
}

// The program with this name in the current folder, as one in `folder` calls it.
std::string seenFrom(const std::string& folder, const std::string& program)
{
    if (folder.empty() || program.find('/') == std::string::npos) {
        return program;
    }
    std::error_code failure;
    const std::filesystem::path whole = std::filesystem::absolute(program, failure);
    return failure ? program : whole.string();
}

} // namespace

ToolRun::Result ToolRun::run(const std::vector<std::string>& words, Receiver& receiver,
                             const std::string& folder)
{
    int ends[2];
    std::FILE* complaints = std::tmpfile();
    if (complaints == nullptr) {
        _complaint = "no room for a temporary file";
        return Failed;
    }
    if (pipe2(ends, O_CLOEXEC) != 0) {
        std::fclose(complaints);
        return Failed;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!folder.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    }
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(complaints), STDERR_FILENO);
    std::vector<std::string> copies = words;
    copies[0] = seenFrom(folder, copies[0]);
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (std::string& word : copies) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int problem = CleanEnd::startProgram(child, pointers.data(), actions);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    const bool isTaken = problem == 0 && pass(ends[0], receiver);
    close(ends[0]);
    int status = -1;
    if (problem == 0) {
        if (!isTaken) {
            kill(child, SIGTERM);
        }
        status = CleanEnd::waitForProgram(child);
    }
    _complaint = lastLine(complaints);
    std::fclose(complaints);
    if (problem != 0) {
        return NotFound;
    }
    return isTaken && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Ok : Failed;
}
