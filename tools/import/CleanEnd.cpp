// SPDX-License-Identifier: MIT
#include "tools/import/CleanEnd.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// Whoever holds the lock makes or removes something; the one who cleans up never gives it back.
struct Remembered
{
    std::mutex _guard;
    std::vector<std::string> _folders;
    std::vector<pid_t> _programs;
    bool _isStarted = false;
    sigset_t _before = {}; // the signals that were held back before start()
};

// Never freed: the thread may outlive everything else.
Remembered& remembered()
{
    static auto* const one = new Remembered;
    return *one;
}

void waitForEnd(pid_t child)
{
    siginfo_t info = {};
    while (waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

void removeAll(const std::string& folder)
{
    std::error_code ignored; // nobody is left to be told
    std::filesystem::remove_all(folder, ignored);
}

// The thread's life.
void waitAndClean(sigset_t signals)
{
    int signal = 0;
    while (sigwait(&signals, &signal) != 0) {
    }
    Remembered& all = remembered();
    all._guard.lock();
    for (const pid_t child : all._programs) {
        kill(child, SIGKILL);
    }
    std::for_each(all._programs.begin(), all._programs.end(), waitForEnd);
    std::for_each(all._folders.begin(), all._folders.end(), removeAll);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    raise(signal);
}

sigset_t signalsThatEnd(const sigset_t& heldBack)
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        struct sigaction action = {};
        if (sigismember(&heldBack, signal) == 0 && sigaction(signal, nullptr, &action) == 0 &&
            action.sa_handler != SIG_IGN) {
            sigaddset(&signals, signal);
        }
    }
    return signals;
}

} // namespace

void CleanEnd::start()
{
    Remembered& all = remembered();
    pthread_sigmask(SIG_BLOCK, nullptr, &all._before);
    const sigset_t signals = signalsThatEnd(all._before);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    try {
        std::thread(waitAndClean, signals).detach();
        all._isStarted = true;
    } catch (const std::system_error&) {
        pthread_sigmask(SIG_SETMASK, &all._before, nullptr);
    }
}

bool CleanEnd::makeFolder(std::string& pattern)
{
    Remembered& all = remembered();
    const std::lock_guard<std::mutex> lock(all._guard);
    if (mkdtemp(pattern.data()) == nullptr) {
        return false;
    }
    all._folders.push_back(pattern);
    return true;
}

bool CleanEnd::makeLink(const std::string& target, const std::string& path)
{
    const std::lock_guard<std::mutex> lock(remembered()._guard);
    return symlink(target.c_str(), path.c_str()) == 0;
}

void CleanEnd::removeFolder(const std::string& path)
{
    Remembered& all = remembered();
    const std::lock_guard<std::mutex> lock(all._guard);
    removeAll(path);
    all._folders.erase(std::remove(all._folders.begin(), all._folders.end(), path),
                       all._folders.end());
}

int CleanEnd::startProgram(pid_t& child, char* const* words,
                           const posix_spawn_file_actions_t& actions)
{
    Remembered& all = remembered();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    if (all._isStarted) {
        posix_spawnattr_setsigmask(&attributes, &all._before);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    }
    const std::lock_guard<std::mutex> lock(all._guard);
    const int problem = posix_spawnp(&child, words[0], &actions, &attributes, words, environ);
    posix_spawnattr_destroy(&attributes);
    if (problem == 0) {
        all._programs.push_back(child);
    }
    return problem;
}

int CleanEnd::waitForProgram(pid_t child)
{
    waitForEnd(child);
    Remembered& all = remembered();
    const std::lock_guard<std::mutex> lock(all._guard);
    int status = -1;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    all._programs.erase(std::remove(all._programs.begin(), all._programs.end(), child),
                        all._programs.end());
    return status;
}
