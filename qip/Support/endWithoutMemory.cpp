// SPDX-License-Identifier: MIT
#include "qip/Support/endWithoutMemory.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <unistd.h>

namespace {

const char* programName = "";
int statusAtEnd = 1;
std::terminate_handler usual = nullptr;

bool isOfMemory()
{
    if (std::current_exception() == nullptr) {
        // An exception takes less than this.
        constexpr size_t Piece = 1024;
        void* piece = std::malloc(Piece);
        std::free(piece);
        return piece == nullptr;
    }
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
}

void print(const char* text)
{
    (void)!write(STDERR_FILENO, text, std::strlen(text));
}

[[noreturn]] void end()
{
    if (isOfMemory()) {
        print(programName);
        print(": out of memory; give the program more\n");
        _exit(statusAtEnd);
    }
    usual();
    std::abort();
}

} // namespace

void endWithoutMemory(const char* name, int status)
{
    programName = name;
    statusAtEnd = status;
    usual = std::set_terminate(end);
}
