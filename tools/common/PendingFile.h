// SPDX-License-Identifier: MIT
//
// A file that is written under a temporary name and takes its own when it is complete and on the
// disk. What is left of it otherwise goes: the object removes it, a signal that ends the program
// does, and after a kill the next import into the folder, which knows by a lock that nobody writes
// it any more.
//
// Where an operation returns false, errno has the system's reason.
#pragma once

#include <string>

class PendingFile
{
public:
    PendingFile() = default;
    // Removes a file that has not taken its name.
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    // Makes an empty temporary file in `folder`. To be called once.
    bool create(const std::string& folder);

    // Of the temporary file, for writers that open it themselves.
    const std::string& temporary() const { return _temporary; }
    // Its descriptor, open for reading and writing.
    int descriptor() const { return _fd; }

    // Appends to the file.
    bool write(const std::string& bytes);

    // Lets the system begin to put on the disk what was written, without waiting: sync() waits less
    // then. The file stays as it is when the system cannot.
    void startSync();

    // Waits until all that was written, also by others, is on the disk.
    bool sync();

    // Takes the name `path`, in the same folder. What had that name before is gone.
    bool commit(const std::string& path);

    // Removes the temporary files in `folder` whose programs are dead. What cannot be removed
    // stays.
    static void removeDead(const std::string& folder);

    // Makes SIGHUP, SIGINT, SIGQUIT and SIGTERM remove the temporary files before they end the
    // program. A signal that is ignored stays so. A file that grows past the limit of the process
    // (ulimit -f) is then a write that fails with EFBIG, not a signal.
    static void removeOnSignals();

private:
    bool makeName(const std::string& folder);
    bool lock();
    void forget();

    std::string _temporary;
    int _fd = -1;
    int _slot = -1; // in the list of files that a signal removes
};
