// SPDX-License-Identifier: MIT
//
// The stdio stream of a record file. What it adds to fopen(): only regular files are opened for
// reading, a seek that stays inside the bytes already fetched costs no system call, a chain of
// seeks back cannot make the reading of a small file slow, and it is seen when somebody writes to
// the file meanwhile.
#pragma once

#include "qip/Support/qipFileState.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <sys/types.h>

class qipFileStream
{
public:
    // Closed.
    qipFileStream();
    qipFileStream(const qipFileStream&) = delete;
    qipFileStream& operator=(const qipFileStream&) = delete;
    // Closes.
    ~qipFileStream();

    // Open the file in place of the one that was open. False when that fails, with the reason in
    // errno where the system refused it, or in change(). A pipe or device cannot be read; a
    // directory opens, and every read of it fails. What is written replaces the file.
    bool openForReading(const char* filename);
    bool openForWriting(const char* filename);

    // Closes the stream, if it is open. False when the last bytes could not be written. Otherwise
    // errno stays: what failed before this call is what the caller reports.
    bool close();

    // The stream; null while closed. seekTo() may replace it by another.
    FILE* fp() const { return _fp; }

    // Gives the system what was written. False when any of it could not be written.
    bool flush();

    // Moves a stream that reads from `here`, where it stands, to `target`, both in bytes from the
    // start. False when that is not possible; the stream may be closed then.
    bool seekTo(int64_t target, int64_t here);

    // Bytes of the file when it was opened for reading.
    int64_t size() const { return _state.size(); }

    // Why what was read since the file was opened for reading is not to be trusted: somebody wrote
    // to it meanwhile. Null when nobody did. After an opening that failed, whether that was why.
    // Static storage.
    const char* change();

    // How often the system was asked for bytes since the file was opened for reading.
    long reads() const { return _source.reads; }

    // The errno of the read that failed last; stdio tells only that one did.
    int readError() const { return _source.error; }

private:
    // What the stream reads from or writes to. Each call says where, so that a seek is none.
    struct Source
    {
        int fd;
        int64_t position; // of the next call; a stream that reads has fetched all before it
        long reads;
        int error;
    };

    static ssize_t readSource(void* source, char* bytes, size_t size);
    static ssize_t writeSource(void* source, const char* bytes, size_t size);
    static int seekSource(void* source, off64_t* offset, int whence);
    static int closeSource(void* source);

    bool openStream(int fd, const char* mode, size_t bufferSize);
    bool takeSmallBuffer();
    bool skip(int64_t count);

    FILE* _fp;
    std::unique_ptr<char[]> _buffer; // of `_fp`, lives as long
    Source _source;                  // of `_fp`
    qipFileState _state;
    const char* _change; // what change() found last
    int _stepsBack;      // seeks to an earlier place, up to a limit
};
