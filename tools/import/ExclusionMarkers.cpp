// SPDX-License-Identifier: MIT
#include "tools/import/ExclusionMarkers.h"

#include <algorithm>
#include <iterator>

namespace {

const std::string middle = "_EXCL_";

bool endsAt(const std::string& text, size_t place, const std::string& word)
{
    return place >= word.size() && text.compare(place - word.size(), word.size(), word) == 0;
}

bool startsAt(const std::string& text, size_t place, const std::string& word)
{
    return text.compare(place, word.size(), word) == 0;
}

// Whether one of the families of markers has its name before `place`.
bool isFamily(const std::string& text, size_t place)
{
    return endsAt(text, place, "LCOV") || endsAt(text, place, "GCOVR") ||
           endsAt(text, place, "GCOV");
}

} // namespace

void ExclusionMarkers::add(uint32_t first, uint32_t last)
{
    if (!_ranges.empty() && first <= _ranges.back()._last + 1) {
        _ranges.back()._last = std::max(_ranges.back()._last, last);
    } else {
        _ranges.push_back({first, last});
    }
}

void ExclusionMarkers::readMarker(const std::string& text, size_t place, uint32_t line)
{
    if (startsAt(text, place, "LINE")) {
        if (_open == 0) {
            add(line, line);
        } else {
            _lineInRegion = line;
        }
    } else if (startsAt(text, place, "START")) {
        if (_open != 0) {
            _problems.push_back({line, "an excluded region begins inside the one of line " +
                                           std::to_string(_open)});
            return;
        }
        _open = line;
    } else if (startsAt(text, place, "STOP")) {
        if (_open == 0) {
            _problems.push_back({line, "an excluded region ends that did not begin"});
            return;
        }
        const uint32_t last = _lineInRegion == line ? line : line - 1;
        if (_open <= last) {
            add(_open, last);
        }
        _open = 0;
    }
}

void ExclusionMarkers::read(const std::string& text)
{
    uint32_t line = 1;
    size_t counted = 0; // newlines before here are in `line`
    for (size_t at = text.find(middle); at != std::string::npos;
         at = text.find(middle, at + middle.size())) {
        if (!isFamily(text, at)) {
            continue;
        }
        const auto newlines = std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                                         text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
        line += static_cast<uint32_t>(newlines);
        counted = at;
        readMarker(text, at + middle.size(), line);
    }
    if (_open != 0) {
        _problems.push_back({_open, "an excluded region begins that does not end"});
        add(_open, UINT32_MAX);
        _open = 0;
    }
}

bool ExclusionMarkers::excludes(uint32_t line) const
{
    const auto behind =
        std::upper_bound(_ranges.begin(), _ranges.end(), line,
                         [](uint32_t wanted, const Range& range) { return wanted < range._first; });
    return behind != _ranges.begin() && line <= std::prev(behind)->_last;
}
