// SPDX-License-Identifier: MIT
//
// The losses of a job that several threads work on. They may have a million items: none has losses
// of its own.
#pragma once

#include "tools/common/ImportLosses.h"

#include <mutex>

class SharedLosses
{
public:
    // Adds those of an item. May be called from several threads.
    void add(const ImportLosses& losses)
    {
        const std::lock_guard<std::mutex> lock(_guard);
        _sum.add(losses);
    }

    // Those of all items. Nobody adds at the same time.
    const ImportLosses& sum() const { return _sum; }

private:
    std::mutex _guard;
    ImportLosses _sum;
};
