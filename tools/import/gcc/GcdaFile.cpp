// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcdaFile.h"

namespace {

constexpr uint32_t SummaryTag = 0xa1000000;
constexpr uint32_t FunctionTag = 0x01000000;
constexpr uint32_t CountersTag = 0x01a10000;
constexpr size_t CounterSize = 8; // bytes

} // namespace

GcdaFile::GcdaFile(const unsigned char* data, size_t size) : _words(data, size), _size(size) {}

GcdaFile::Result GcdaFile::open(uint32_t stamp)
{
    if (!_words.readHead(GcovWords::CountersMagic)) {
        return NotCounters;
    }
    if (!_words.isKnown()) {
        return UnknownVersion;
    }
    if (_words.failed()) {
        return Damaged;
    }
    if (_words.stamp() != stamp) {
        return OtherBuild;
    }
    Entry* current = nullptr;
    GcovWords::Record record;
    while (_words.nextRecord(record)) {
        const size_t end = _words.position();
        _words.confine(record._start, record._start + record._size);
        if (record._tag == SummaryTag) {
            _runs = _words.word();
        } else if (record._tag == FunctionTag && record._size != 0) {
            current = &_functions[_words.word()];
            *current = Entry();
            current->_lineChecksum = _words.word();
            current->_graphChecksum = _words.word();
        } else if (record._tag == FunctionTag) {
            current = nullptr;
        } else if (record._tag == CountersTag && current != nullptr) {
            current->_start = record._start;
            current->_size = record._size;
            current->_isZeroed = record._isZeroed;
        }
        if (_words.failed()) {
            return Damaged;
        }
        _words.confine(end, _size);
    }
    return _words.failed() || !_words.isClosed() ? Damaged : Ok;
}

const char* GcdaFile::text(Result result)
{
    switch (result) {
    case NotCounters:
        return "the .gcda file holds no counters";
    case UnknownVersion:
        return "the .gcda file is of another compiler version";
    case OtherBuild:
        return "the .gcda file belongs to another build of the unit (stamp mismatch)";
    default:
        return "the .gcda file is damaged or ends early";
    }
}

bool GcdaFile::fits(const GcnoIdentity& function, size_t nCounters) const
{
    const auto found = _functions.find(function._ident);
    if (found == _functions.end()) {
        return true;
    }
    const Entry& entry = found->second;
    return entry._lineChecksum == function._lineChecksum &&
           entry._graphChecksum == function._graphChecksum &&
           (entry._isZeroed || nCounters == entry._size / CounterSize);
}

void GcdaFile::addCounters(uint32_t ident, std::vector<GcnoArc>& arcs)
{
    const auto found = _functions.find(ident);
    if (found == _functions.end() || found->second._isZeroed) {
        return;
    }
    const Entry& entry = found->second;
    _words.confine(entry._start, entry._start + entry._size);
    for (GcnoArc& arc : arcs) {
        if ((arc._flags & GcnoArc::OnTree) == 0) {
            // Damaged counters may overflow; unsigned sums do so without harm.
            arc._count = static_cast<int64_t>(static_cast<uint64_t>(arc._count) +
                                              static_cast<uint64_t>(_words.count()));
        }
    }
}

bool GcdaFile::fillCounters(GcnoFunction& function)
{
    size_t counters = 0;
    for (const GcnoArc& arc : function._arcs) {
        counters += (arc._flags & GcnoArc::OnTree) == 0 ? 1 : 0;
    }
    if (!fits(function, counters)) {
        return false;
    }
    addCounters(function._ident, function._arcs);
    return true;
}
