// SPDX-License-Identifier: MIT
//
// A file of tagged, variable-length records. All words are unsigned, 32 bits, big-endian.
//
//   offset  size  content
//        0    64  file header (qipVLHeader)
//       64     U  user header: U bytes that the subclass reads and writes
//   64 + U   ...  records in the order written: 16 bytes (qipVLRecord), then the payload
//
// Written by appending, read by walking the chain from the first record. The walk trusts the chain:
// it neither counts the records nor compares magic number and version. What it does not trust is a
// chain that cannot end, or records that overlap so that a small file would unfold into a large
// one. docs/formats/container.md explains the format and dissects a sample.
//
// Life cycle:  closed > open(READ)  > load(), any number of times > destroyed
//              closed > open(WRITE) > newRecord(), any number of times > close() > closed
// A file open for reading stays open until the object goes or opens another: close() ends only
// writing.
//
// Every operation returns 0 (or a count) or one of the negative codes below; error() has the texts.
// Where the system refused to open or to write (-1, -3, -10), errno has its reason.
#pragma once

#include "qip/Support/qipFileStream.h"
#include "qip/Support/qipVLFailure.h"
#include "qip/Support/qipVLHeader.h"
#include "qip/Support/qipVLRecord.h"

#include <cstdint>
#include <cstdio>

class qipVLRecFile
{
public:
    // Any int may come in: open() refuses what it does not know.
    enum Mode : int { READ = 0, WRITE = 1 };

    enum Code {
        NoError = 0,
        OpenFailed = -1, // also a record header cut short
        ReadFailed = -2,
        WriteFailed = -3,
        CreateFailed = -4,
        BadMagic = -5,
        BadVersion = -6,
        OutOfMemory = -7,
        DoubleFree = -8,
        FileCorrupt = -9,
        ShutDown = -10,
        BadParameter = -11
    };

    qipVLRecFile();
    qipVLRecFile(const qipVLRecFile&) = delete;
    qipVLRecFile& operator=(const qipVLRecFile&) = delete;

    // Writes `_currentRecord` at the end of the file and links it behind the last record. Returns
    // 0, also when no file is open or no record is pending; -3 when the file cannot take the bytes
    // or its end is past the 32-bit offsets; -10 when a flush or seek fails.
    [[nodiscard]] virtual int update();

    // Appends a record of `size` bytes at `data`, which is borrowed for the call. Null data or size
    // 0 writes nothing and returns 0. Returns what update() returns, or -7.
    [[nodiscard]] virtual int newRecord(unsigned int tag, const char* data, unsigned int size);

protected:
    // Called with the stream right behind the file header: by open(), and writeHeader() again by
    // close(). An override reads or writes the user header; what is not 0 ends open() or close().
    // These two do nothing and return 0.
    virtual int readHeader();
    virtual int writeHeader();

    // For processRecord(): returns `code` and notes that what is behind it is `cause`.
    int failed(int code, int cause);

    // Called by load() with the stream at the first byte of a payload of `size` bytes. The override
    // reads what it wants and leaves the stream anywhere. A negative result ends load().
    virtual int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) = 0;

public:
    // Closes the stream without finishing a file that is being written.
    virtual ~qipVLRecFile();

    // Gives every record in chain order to processRecord(). Returns their number (0 or more); -10
    // when no file is open; -1 when a record header is cut short; -9 when the chain comes back to
    // itself, when its records read far more bytes than the file has, or when a seek fails; or the
    // first negative result of processRecord(). Also -9 when somebody wrote to the file since it
    // was opened. Records given out before that stay given out.
    [[nodiscard]] virtual int load();

    // Opens `filename` (keeps a copy) and reads or writes both headers. `userHeaderSz` is in bytes
    // and counts only for WRITE, which truncates an existing file. A file that is open for writing
    // is completed first. Only regular files are read: a directory is -9, a pipe or device -1.
    // A file opened for WRITE starts with a header of its own: counts and offsets of a file that
    // the object had open before are of no use in it, and readers of a half-written file would take
    // them for its own. Pinned by qipVLRecFileTest.AnotherFileStartsWithAFreshHeader.
    // Returns 0; -1 when the file cannot be opened or somebody keeps writing to it; -3 when it
    // cannot take the headers; -9 when the header is cut short; -11 for a null name or an unknown
    // mode; or what readHeader() or writeHeader() returned. After a failure no file is open.
    [[nodiscard]] virtual int open(const char* filename, Mode mode, int userHeaderSz);

    // Finishes a file open for writing: both headers are written again with the final numbers, and
    // the stream is closed. Returns 0, also for a file open for reading, which stays open, or the
    // code of the step that failed: -3 when the file did not take all the bytes.
    virtual int close();

    // Writes the contents as text.
    virtual void dump(std::ostream& out) = 0;

    // The text for a code; "Unknown error" for any other number. Static storage.
    static const char* error(int code);

    // Why and where the last open() or load() failed; no failure after one that went well.
    const qipVLFailure& failure() const { return _failure; }

    // The name given to open(), null before.
    const char* filename() const { return _filename; }
    const qipVLHeader& header() const { return _header; }

protected:
    FILE* _fp; // of `_stream`; null while no file is open
    Mode _mode;
    char* _filename; // owned
    qipVLHeader _header;
    qipVLRecord* _currentRecord; // owned; null between calls
    qipVLFailure _failure;

private:
    int walk();
    int failedToRead(int code);
    int failedToOpen();
    bool hasChanged();
    int openForReading();
    int openForWriting(int userHeaderSz);
    int flush();
    int link(uint32_t previousRecord);
    bool closeStream();

    qipFileStream _stream;
};
