// SPDX-License-Identifier: MIT
//
// A library for LD_PRELOAD that makes one call of a program fail. What to do comes from the
// environment, and children of the program know nothing of it:
//
//   ZEM_FAULT_CALL    open, read, write, seek, close, sync, rename, readdir or malloc; each stands
//                     for all functions of its kind
//   ZEM_FAULT_AT      which call, from 1; 0 lets all pass
//   ZEM_FAULT_HOW     fail (the default), last (this call and all behind it fail), short (half the
//                     bytes are read or written), kill (the program is killed before the call),
//                     touch (the file that is read is written to before this
//                     call and all behind it)
//   ZEM_FAULT_ERRNO   the reason that a call that fails gives; EIO by default
//   ZEM_FAULT_FILE    when set, only calls that open or read this file are counted and fail
//   ZEM_FAULT_OWN     when set, only allocations of the program's own code and of the C++ library
//                     are counted and fail, not those of other libraries
//   ZEM_FAULT_COUNTS  a file that gets a line "CALL NUMBER" for each kind when the program ends
//
// Calls that the C library makes of itself are not seen: a stream of its own (fopen) is seen when
// it is opened and then no more.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);
}

// Where a function of this library was called from.
#define CALLER __builtin_return_address(0)

namespace {

enum Call { Open, Read, Write, Seek, Close, Sync, Rename, Readdir, Malloc, NCalls };
const char* const callNames[NCalls] = {"open", "read",   "write",   "seek",  "close",
                                       "sync", "rename", "readdir", "malloc"};

enum How { Fail, Last, Short, Kill, Touch, NHows };
const char* const howNames[NHows] = {"fail", "last", "short", "kill", "touch"};

const char* const names[] = {"LD_PRELOAD",       "ZEM_FAULT_CALL",  "ZEM_FAULT_AT",
                             "ZEM_FAULT_HOW",    "ZEM_FAULT_ERRNO", "ZEM_FAULT_OWN",
                             "ZEM_FAULT_COUNTS", "ZEM_FAULT_FILE"};

enum Verdict { Pass, Break, Halve };

std::atomic<long> counts[NCalls];
std::atomic<bool> isStarted{false};
int chosenCall = -1;
long chosenAt = 0;
How chosenHow = Fail;
int chosenReason = EIO;
bool takesOwnOnly = false;
char countsFile[4096];
char chosenFile[4096]; // empty for any

// Code of the program and of the C++ library.
struct Range
{
    uintptr_t begin;
    uintptr_t end;
};
Range ownCode[16];
int nOwnCode = 0;

// No call of this function may come back here: it is asked by malloc, too.
Verdict ask(Call call)
{
    if (!isStarted) {
        return Pass;
    }
    const long number = ++counts[call];
    if (call != chosenCall || chosenAt == 0 || number < chosenAt ||
        (number > chosenAt && chosenHow != Last && chosenHow != Touch)) {
        return Pass;
    }
    if (chosenHow == Kill) {
        syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
    }
    if (chosenHow == Short) {
        return Halve;
    }
    errno = chosenReason;
    return Break;
}

// The same for a file that is to be opened.
Verdict askFor(const char* path)
{
    return chosenFile[0] == '\0' || std::strcmp(path, chosenFile) == 0 ? ask(Open) : Pass;
}

// The same for one that is to be read.
Verdict askToRead(int fd)
{
    if (chosenFile[0] != '\0') {
        char name[64];
        char path[sizeof chosenFile] = "";
        std::snprintf(name, sizeof name, "/proc/self/fd/%d", fd);
        if (readlink(name, path, sizeof path - 1) < 0 || std::strcmp(path, chosenFile) != 0) {
            return Pass;
        }
    }
    const Verdict verdict = ask(Read);
    if (verdict == Break && chosenHow == Touch) {
        futimens(fd, nullptr);
        return Pass;
    }
    return verdict;
}

// The same for an allocation that was asked for from `caller`.
Verdict askFor(const void* caller)
{
    const auto address = reinterpret_cast<uintptr_t>(caller);
    bool isOwn = !takesOwnOnly;
    for (int i = 0; i < nOwnCode && !isOwn; ++i) {
        isOwn = address >= ownCode[i].begin && address < ownCode[i].end;
    }
    return isOwn ? ask(Malloc) : Pass;
}

// Called for each object that is loaded; the program itself has no name.
int noteOwnCode(struct dl_phdr_info* object, size_t, void*)
{
    if (object->dlpi_name[0] != '\0' && std::strstr(object->dlpi_name, "libstdc++") == nullptr) {
        return 0;
    }
    for (int i = 0; i < object->dlpi_phnum && nOwnCode < 16; ++i) {
        const ElfW(Phdr)& part = object->dlpi_phdr[i];
        if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
            const uintptr_t begin = object->dlpi_addr + part.p_vaddr;
            ownCode[nOwnCode++] = {begin, begin + part.p_memsz};
        }
    }
    return 0;
}

// The function that this library stands in front of.
void* next(const char* name)
{
    return dlsym(RTLD_NEXT, name);
}

int indexOf(const char* text, const char* const* names, int n)
{
    for (int i = 0; text != nullptr && i < n; ++i) {
        if (std::strcmp(text, names[i]) == 0) {
            return i;
        }
    }
    return -1;
}

__attribute__((constructor)) void start()
{
    chosenCall = indexOf(getenv("ZEM_FAULT_CALL"), callNames, NCalls);
    const char* at = getenv("ZEM_FAULT_AT");
    chosenAt = at != nullptr ? std::atol(at) : 0;
    const int how = indexOf(getenv("ZEM_FAULT_HOW"), howNames, NHows);
    chosenHow = how < 0 ? Fail : static_cast<How>(how);
    const char* reason = getenv("ZEM_FAULT_ERRNO");
    chosenReason = reason != nullptr ? std::atoi(reason) : EIO;
    const char* file = getenv("ZEM_FAULT_COUNTS");
    if (file != nullptr) {
        std::snprintf(countsFile, sizeof countsFile, "%s", file);
    }
    file = getenv("ZEM_FAULT_FILE");
    std::snprintf(chosenFile, sizeof chosenFile, "%s", file != nullptr ? file : "");
    takesOwnOnly = getenv("ZEM_FAULT_OWN") != nullptr;
    dl_iterate_phdr(noteOwnCode, nullptr);
    for (const char* name : names) {
        unsetenv(name);
    }
    isStarted = true;
}

__attribute__((destructor)) void stop()
{
    isStarted = false;
    if (countsFile[0] == '\0') {
        return;
    }
    const int fd = static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, countsFile, O_WRONLY | O_CREAT | O_TRUNC, 0600));
    for (int i = 0; i < NCalls; ++i) {
        char line[64];
        const int size =
            std::snprintf(line, sizeof line, "%s %ld\n", callNames[i], counts[i].load());
        syscall(SYS_write, fd, line, size);
    }
    syscall(SYS_close, fd);
}

size_t part(Verdict verdict, size_t size)
{
    return verdict == Halve && size > 1 ? size / 2 : size;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return askFor(path) == Break
               ? -1
               : reinterpret_cast<decltype(&open)>(next("open"))(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return askFor(path) == Break
               ? -1
               : reinterpret_cast<decltype(&open64)>(next("open64"))(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode)
{
    return askFor(path) == Break ? nullptr
                                 : reinterpret_cast<decltype(&fopen)>(next("fopen"))(path, mode);
}

FILE* fopen64(const char* path, const char* mode)
{
    return askFor(path) == Break
               ? nullptr
               : reinterpret_cast<decltype(&fopen64)>(next("fopen64"))(path, mode);
}

DIR* opendir(const char* path)
{
    return askFor(path) == Break ? nullptr
                                 : reinterpret_cast<decltype(&opendir)>(next("opendir"))(path);
}

struct dirent* readdir(DIR* folder)
{
    return ask(Readdir) == Break ? nullptr
                                 : reinterpret_cast<decltype(&readdir)>(next("readdir"))(folder);
}

struct dirent64* readdir64(DIR* folder)
{
    return ask(Readdir) == Break
               ? nullptr
               : reinterpret_cast<decltype(&readdir64)>(next("readdir64"))(folder);
}

ssize_t read(int fd, void* bytes, size_t size)
{
    const Verdict verdict = askToRead(fd);
    return verdict == Break
               ? -1
               : reinterpret_cast<decltype(&read)>(next("read"))(fd, bytes, part(verdict, size));
}

ssize_t pread(int fd, void* bytes, size_t size, off_t at)
{
    const Verdict verdict = askToRead(fd);
    return verdict == Break ? -1
                            : reinterpret_cast<decltype(&pread)>(next("pread"))(
                                  fd, bytes, part(verdict, size), at);
}

ssize_t pread64(int fd, void* bytes, size_t size, off64_t at)
{
    const Verdict verdict = askToRead(fd);
    return verdict == Break ? -1
                            : reinterpret_cast<decltype(&pread64)>(next("pread64"))(
                                  fd, bytes, part(verdict, size), at);
}

ssize_t write(int fd, const void* bytes, size_t size)
{
    const Verdict verdict = ask(Write);
    return verdict == Break
               ? -1
               : reinterpret_cast<decltype(&write)>(next("write"))(fd, bytes, part(verdict, size));
}

ssize_t pwrite(int fd, const void* bytes, size_t size, off_t at)
{
    const Verdict verdict = ask(Write);
    return verdict == Break ? -1
                            : reinterpret_cast<decltype(&pwrite)>(next("pwrite"))(
                                  fd, bytes, part(verdict, size), at);
}

ssize_t pwrite64(int fd, const void* bytes, size_t size, off64_t at)
{
    const Verdict verdict = ask(Write);
    return verdict == Break ? -1
                            : reinterpret_cast<decltype(&pwrite64)>(next("pwrite64"))(
                                  fd, bytes, part(verdict, size), at);
}

off_t lseek(int fd, off_t offset, int whence)
{
    return ask(Seek) == Break
               ? -1
               : reinterpret_cast<decltype(&lseek)>(next("lseek"))(fd, offset, whence);
}

off64_t lseek64(int fd, off64_t offset, int whence)
{
    return ask(Seek) == Break
               ? -1
               : reinterpret_cast<decltype(&lseek64)>(next("lseek64"))(fd, offset, whence);
}

// As the system does it: what fails is told, and the descriptor is gone all the same.
int close(int fd)
{
    const Verdict verdict = ask(Close);
    const int reason = errno;
    const int result = reinterpret_cast<decltype(&close)>(next("close"))(fd);
    if (verdict == Break) {
        errno = reason;
        return -1;
    }
    return result;
}

int fsync(int fd)
{
    return ask(Sync) == Break ? -1 : reinterpret_cast<decltype(&fsync)>(next("fsync"))(fd);
}

int fdatasync(int fd)
{
    return ask(Sync) == Break ? -1 : reinterpret_cast<decltype(&fdatasync)>(next("fdatasync"))(fd);
}

int rename(const char* from, const char* to)
{
    return ask(Rename) == Break ? -1
                                : reinterpret_cast<decltype(&rename)>(next("rename"))(from, to);
}

void* malloc(size_t size)
{
    return askFor(CALLER) == Break ? nullptr : __libc_malloc(size);
}

void* calloc(size_t n, size_t size)
{
    return askFor(CALLER) == Break ? nullptr : __libc_calloc(n, size);
}

void* realloc(void* memory, size_t size)
{
    return askFor(CALLER) == Break ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(size_t alignment, size_t size)
{
    return askFor(CALLER) == Break ? nullptr : __libc_memalign(alignment, size);
}

// In the C library it would be that library which asks for the memory.
char* strdup(const char* text)
{
    const size_t size = std::strlen(text) + 1;
    void* copy = askFor(CALLER) == Break ? nullptr : __libc_malloc(size);
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

} // extern "C"
