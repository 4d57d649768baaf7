// SPDX-License-Identifier: MIT
#include "zem/Data/RecordReader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <algorithm>
#include <cstring>
#include <new>

// fread_unlocked(): there is one thread, and four reads a function make the locks of fread() a
// sixth of a map file's load.

namespace {

// Words taken at once: a count may claim more than the file holds by no more than this.
constexpr uint32_t PieceWords = 64 * 1024;

int readLength(FILE* stream, size_t& length)
{
    unsigned char bytes[2];
    if (fread_unlocked(bytes, 1, sizeof bytes, stream) != sizeof bytes) {
        return qipVLRecFile::FileCorrupt;
    }
    length = qipGetBig16(bytes);
    return qipVLRecFile::NoError;
}

// Reads `length` bytes of a name into an array of one more.
int readText(FILE* stream, size_t length, char* name)
{
    const size_t read = fread_unlocked(name, 1, length, stream);
    std::fill(name + read, name + length + 1, '\0');
    return read == length ? qipVLRecFile::NoError : qipVLRecFile::FileCorrupt;
}

// Reads `count` words into the host's order. Returns how many there were.
size_t readWords(FILE* stream, uint32_t* words, size_t count)
{
    const size_t read = fread_unlocked(words, 4, count, stream);
    qipBigToHost32(words, read);
    return read;
}

} // namespace

int RecordReader::words(FILE* stream, uint32_t* values, int count)
{
    unsigned char bytes[16];
    const size_t size = static_cast<size_t>(count) * 4;
    const size_t read = fread_unlocked(bytes, 1, size, stream);
    for (size_t i = 0; i < read / 4; ++i) {
        values[i] = qipGetBig32(bytes + 4 * i);
    }
    return read == size ? qipVLRecFile::NoError : qipVLRecFile::FileCorrupt;
}

int RecordReader::name(FILE* stream, char*& name)
{
    delete[] name;
    name = nullptr;
    size_t length = 0;
    if (readLength(stream, length) != qipVLRecFile::NoError) {
        return qipVLRecFile::FileCorrupt;
    }
    name = new (std::nothrow) char[length + 1];
    return name == nullptr ? qipVLRecFile::OutOfMemory : readText(stream, length, name);
}

int RecordReader::name(FILE* stream, std::pmr::memory_resource& memory, char*& name)
{
    name = nullptr;
    size_t length = 0;
    if (readLength(stream, length) != qipVLRecFile::NoError) {
        return qipVLRecFile::FileCorrupt;
    }
    try {
        name = static_cast<char*>(memory.allocate(length + 1, 1));
    } catch (const std::bad_alloc&) {
        return qipVLRecFile::OutOfMemory;
    }
    return readText(stream, length, name);
}

int RecordReader::array(FILE* stream, uint32_t count, std::vector<uint32_t>& array)
{
    try {
        while (count > 0) {
            const uint32_t piece = std::min(count, PieceWords);
            const size_t start = array.size();
            array.resize(start + piece);
            const size_t read = readWords(stream, &array[start], piece);
            if (read != piece) {
                array.resize(start + read);
                return qipVLRecFile::FileCorrupt;
            }
            count -= piece;
        }
    } catch (const std::bad_alloc&) {
        return qipVLRecFile::OutOfMemory;
    }
    return qipVLRecFile::NoError;
}

int RecordReader::array(FILE* stream, std::pmr::memory_resource& memory, uint32_t& count,
                        uint32_t*& array)
{
    const uint32_t claimed = count;
    uint32_t room = std::min(claimed, PieceWords);
    count = 0;
    array = nullptr;
    try {
        while (count < claimed) {
            auto* words = static_cast<uint32_t*>(memory.allocate(size_t(4) * room, 4));
            if (count > 0) {
                std::memcpy(words, array, size_t(4) * count);
            }
            const size_t read = readWords(stream, words + count, room - count);
            count += static_cast<uint32_t>(read);
            array = count == 0 ? nullptr : words;
            if (count < room) {
                return qipVLRecFile::FileCorrupt;
            }
            room = room < claimed / 2 ? room * 2 : claimed;
        }
    } catch (const std::bad_alloc&) {
        return qipVLRecFile::OutOfMemory;
    }
    return qipVLRecFile::NoError;
}
