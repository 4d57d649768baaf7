// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovInput.h"

#include <algorithm>

namespace {

// Most files are smaller: one read.
constexpr uint64_t FirstPiece = 64 * 1024;
constexpr uint64_t NextPiece = 1024 * 1024;

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

bool GcovInput::fail(const std::string& problem)
{
    _problem = problem;
    return false;
}

bool GcovInput::read(const std::string& path)
{
    if (!_file.openToWatch(path) || !_file.append(_bytes, FirstPiece)) {
        return fail(_file.problem());
    }
    return readRecords() && (_file.isUnchanged() || fail(_file.problem()));
}

// Reads until `end` bytes are there, or all that the file has.
bool GcovInput::readUpTo(uint64_t end)
{
    end = std::min(end, _file.size());
    if (end > LargestFile) {
        return fail("Its records claim more than " + std::to_string(LargestFile >> 20) + " MiB");
    }
    while (_bytes.size() < end) {
        if (!_file.append(_bytes, std::max(NextPiece, _bytes.size()))) {
            return fail(_file.problem());
        }
    }
    return true;
}

// Goes from record to record and reads what each claims. Stops where the file closes, is cut short
// or is none of its kind.
bool GcovInput::readRecords()
{
    GcovWords words(bytesOf(_bytes), _bytes.size());
    if (!words.readHead(_magic) || !words.isKnown()) {
        return true;
    }
    if (_magic == GcovWords::NotesMagic) {
        words.skipNotesHead();
    }
    GcovWords::Record record;
    while (!words.failed()) {
        const size_t position = words.position();
        if (!readUpTo(position + GcovWords::RecordHeadSize)) {
            return false;
        }
        words.extend(bytesOf(_bytes), _bytes.size());
        if (!words.readRecordHead(record)) {
            return true;
        }
        const uint64_t end = record._start + uint64_t(record._size);
        if (end > _file.size()) {
            return true; // cut short; the reader sees it
        }
        if (!readUpTo(end)) {
            return false;
        }
        words.extend(bytesOf(_bytes), _bytes.size());
        words.confine(static_cast<size_t>(end), _bytes.size());
    }
    return true;
}
