// SPDX-License-Identifier: MIT
//
// A file that a report is written into. It takes its name when all of it is on the disk: whatever
// happens, there is the old file or the whole new one. A name that is no regular file, a pipe or
// /dev/null, is written into directly.
//
//     ReportFile file;
//     bool isGood = file.open(path);
//     if (isGood) {
//         file.stream() << "text";
//         isGood = file.close();
//     }
#pragma once

#include <memory>
#include <ostream>
#include <string>

class ReportFile
{
public:
    ReportFile();
    // Removes a file that has not taken its name.
    ~ReportFile();
    ReportFile(const ReportFile&) = delete;
    ReportFile& operator=(const ReportFile&) = delete;

    // Begins to write the file that `path` names. A map or a log is never written over: it is the
    // coverage itself. To be called once. Returns false with problem() set.
    bool open(const char* path);

    // REQUIRES: open() returned true.
    std::ostream& stream() { return _stream; }

    // Whether the name is that of a terminal. REQUIRES: open() returned true.
    bool isTerminal() const;

    // Ends the file. Returns false with problem() set when a byte of it could not be written.
    bool close();

    // What went wrong, such as "No space left on device".
    const std::string& problem() const { return _problem; }

private:
    class Buffer;

    bool fail(const char* problem);
    bool openPending(const std::string& path);
    bool openDirectly(const char* path);

    struct Pending;

    std::unique_ptr<Pending> _pending; // null when written directly
    std::unique_ptr<Buffer> _buffer;
    std::ostream _stream;
    std::string _path; // that the pending file gets
    std::string _problem;
    int _fd; // that was opened here, or -1
};
