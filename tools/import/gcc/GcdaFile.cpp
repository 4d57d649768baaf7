// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcdaFile.h"

#include <algorithm>

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
    const Result result = readRecords();
    sortFunctions();
    return result;
}

GcdaFile::Result GcdaFile::readRecords()
{
    Entry* current = nullptr;
    GcovWords::Record record;
    while (_words.nextRecord(record)) {
        const size_t end = _words.position();
        _words.confine(record._start, record._start + record._size);
        if (record._tag == SummaryTag) {
            _runs = _words.word();
        } else if (record._tag == FunctionTag && record._size != 0) {
            current = &_functions.emplace_back();
            current->_ident = _words.word();
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

// Of several functions with one ident the last one counts.
void GcdaFile::sortFunctions()
{
    const auto isBefore = [](const Entry& a, const Entry& b) {
        return a._ident < b._ident;
    };
    if (!std::is_sorted(_functions.begin(), _functions.end(), isBefore)) {
        std::stable_sort(_functions.begin(), _functions.end(), isBefore);
    }
    const auto first =
        std::unique(_functions.rbegin(), _functions.rend(),
                    [](const Entry& a, const Entry& b) { return a._ident == b._ident; });
    _functions.erase(_functions.begin(), first.base());
}

size_t GcdaFile::placeOf(uint32_t ident) const
{
    if (_next < _functions.size() && _functions[_next]._ident == ident) {
        return _next++;
    }
    if (_next > 0 && _functions[_next - 1]._ident == ident) {
        return _next - 1; // asked for once more
    }
    const auto found =
        std::lower_bound(_functions.begin(), _functions.end(), ident,
                         [](const Entry& entry, uint32_t wanted) { return entry._ident < wanted; });
    if (found == _functions.end() || found->_ident != ident) {
        return _functions.size();
    }
    _next = static_cast<size_t>(found - _functions.begin()) + 1;
    return _next - 1;
}

const GcdaFile::Entry* GcdaFile::find(uint32_t ident) const
{
    const size_t place = placeOf(ident);
    return place < _functions.size() ? &_functions[place] : nullptr;
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
    const Entry* entry = find(function._ident);
    return entry == nullptr || (entry->_lineChecksum == function._lineChecksum &&
                                entry->_graphChecksum == function._graphChecksum &&
                                (entry->_isZeroed || nCounters == entry->_size / CounterSize));
}

bool GcdaFile::meet(const GcnoIdentity& function)
{
    const size_t place = placeOf(function._ident);
    if (place == _functions.size()) {
        return true;
    }
    Entry& entry = _functions[place];
    _nMet += entry._isMet ? 0 : 1;
    entry._isMet = true;
    return entry._lineChecksum == function._lineChecksum &&
           entry._graphChecksum == function._graphChecksum;
}

void GcdaFile::addCounters(uint32_t ident, std::vector<GcnoArc>& arcs)
{
    const Entry* entry = find(ident);
    if (entry == nullptr || entry->_isZeroed) {
        return;
    }
    _words.confine(entry->_start, entry->_start + entry->_size);
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
