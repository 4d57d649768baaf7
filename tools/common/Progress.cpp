// SPDX-License-Identifier: MIT
#include "tools/common/Progress.h"

#include <cstdio>
#include <unistd.h>

Progress::Progress(const char* title, size_t nItems)
    : _title(title), _nItems(nItems), _isShown(isatty(STDERR_FILENO) == 1 && nItems > 0)
{}

Progress::~Progress()
{
    if (_isShown) {
        std::fprintf(stderr, "\r\033[K");
    }
}

void Progress::step()
{
    if (!_isShown) {
        return;
    }
    const std::lock_guard<std::mutex> lock(_guard);
    ++_done;
    const size_t percent = _done * 100 / _nItems;
    if (percent != _shownPercent) {
        _shownPercent = percent;
        std::fprintf(stderr, "\r%s: %zu of %zu", _title, _done, _nItems);
    }
}
