// SPDX-License-Identifier: MIT
//
// One line on the standard error stream that counts finished items, on a terminal only.
#pragma once

#include <cstddef>
#include <mutex>

class Progress
{
public:
    // `title` is borrowed for the object's life.
    Progress(const char* title, size_t nItems);
    // Wipes the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Counts one item; may be called from any thread.
    void step();

private:
    const char* _title;
    const size_t _nItems;
    const bool _isShown;
    std::mutex _guard;
    size_t _done = 0;
    size_t _shownPercent = 101; // none yet
};
