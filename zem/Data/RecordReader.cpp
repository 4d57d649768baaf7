// SPDX-License-Identifier: MIT
#include "zem/Data/RecordReader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <algorithm>
#include <new>

// fread_unlocked(): there is one thread, and four reads a function make the locks of fread() a
// sixth of a map file's load.

namespace {

// Words taken at once: a count may claim more than the file holds by no more than this.
constexpr uint32_t PieceWords = 64 * 1024;

} // namespace

int RecordReader::words(FILE* stream, uint32_t* values, int count)
{
    unsigned char bytes[16];
    const size_t size = static_cast<size_t>(count) * 4;
    if (fread_unlocked(bytes, 1, size, stream) != size) {
        return qipVLRecFile::FileCorrupt;
    }
    for (int i = 0; i < count; ++i) {
        values[i] = qipGetBig32(bytes + 4 * i);
    }
    return qipVLRecFile::NoError;
}

int RecordReader::name(FILE* stream, char*& name)
{
    delete[] name;
    name = nullptr;
    unsigned char bytes[2];
    if (fread_unlocked(bytes, 1, sizeof bytes, stream) != sizeof bytes) {
        return qipVLRecFile::FileCorrupt;
    }
    const size_t length = qipGetBig16(bytes);
    name = new (std::nothrow) char[length + 1];
    if (name == nullptr) {
        return qipVLRecFile::OutOfMemory;
    }
    const size_t read = fread_unlocked(name, 1, length, stream);
    std::fill(name + read, name + length + 1, '\0');
    return read == length ? qipVLRecFile::NoError : qipVLRecFile::FileCorrupt;
}

int RecordReader::array(FILE* stream, uint32_t count, std::vector<uint32_t>& array)
{
    try {
        while (count > 0) {
            const uint32_t piece = std::min(count, PieceWords);
            const size_t start = array.size();
            array.resize(start + piece);
            const size_t read = fread_unlocked(&array[start], 4, piece, stream);
            qipBigToHost32(&array[start], read);
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
