// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovInput.h"

#include <algorithm>

namespace {

// Most files are smaller: one read.
constexpr uint64_t FirstPiece = 64 * 1024;
constexpr uint64_t NextPiece = 1024 * 1024;

// Nearly all files are smaller. One that begins like its kind is read whole, and its memory is kept
// for the next; of a larger one nothing is read that its records do not claim.
constexpr uint64_t SmallFile = 16u << 20;

} // namespace

bool GcovInput::fail(const std::string& problem)
{
    _problem = problem;
    _size = 0;
    return false;
}

bool GcovInput::read(const std::string& path)
{
    if (_memory.size() > SmallFile) {
        std::string().swap(_memory);
    }
    _size = 0;
    _problem.clear();
    InputFile file;
    if (!file.openToWatch(path)) {
        return fail(file.problem());
    }
    return append(FirstPiece, file) && readRecords(file) &&
           (file.isUnchanged() || fail(file.problem()));
}

// Reads the next `size` bytes, or all that the file has.
bool GcovInput::append(uint64_t size, InputFile& file)
{
    size = std::min(size, file.size() - _size);
    if (_memory.size() - _size < size) {
        _memory.resize(_size + static_cast<size_t>(size));
    }
    if (!file.fill(_size, static_cast<size_t>(size), &_memory[_size])) {
        return fail(file.problem());
    }
    _size += static_cast<size_t>(size);
    return true;
}

// Reads until `end` bytes are there, or all that the file has.
bool GcovInput::readUpTo(uint64_t end, InputFile& file)
{
    end = std::min(end, file.size());
    if (end > LargestFile) {
        return fail("Its records claim more than " + std::to_string(LargestFile >> 20) + " MiB");
    }
    while (_size < end) {
        if (!append(std::max(NextPiece, uint64_t{_size}), file)) {
            return false;
        }
    }
    return true;
}

// Goes from record to record and reads what each claims. Stops where the file closes, is cut short
// or is none of its kind.
bool GcovInput::readRecords(InputFile& file)
{
    GcovWords words(data(), _size);
    if (!words.readHead(_magic) || !words.isKnown()) {
        return true;
    }
    if (file.size() <= SmallFile) {
        return append(file.size(), file);
    }
    if (_magic == GcovWords::NotesMagic) {
        words.skipNotesHead();
    }
    GcovWords::Record record;
    while (!words.failed()) {
        // Most records are there already.
        const size_t position = words.position();
        if (words.left() < GcovWords::RecordHeadSize) {
            if (!readUpTo(position + GcovWords::RecordHeadSize, file)) {
                return false;
            }
            words.extend(data(), _size);
        }
        if (!words.readRecordHead(record)) {
            return true;
        }
        const uint64_t end = record._start + uint64_t(record._size);
        if (end > file.size()) {
            return true; // cut short; the reader sees it
        }
        if (end > _size) {
            if (!readUpTo(end, file)) {
                return false;
            }
            words.extend(data(), _size);
        }
        words.confine(static_cast<size_t>(end), _size);
    }
    return true;
}
