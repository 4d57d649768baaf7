// SPDX-License-Identifier: MIT
//
// Spreads independent items over threads.
#pragma once

#include <cstddef>

// What runParallel() calls. Calls with different items come from several threads at once.
class ParallelJob
{
public:
    virtual ~ParallelJob() = default;
    virtual void run(size_t item) = 0;
};

// Runs the job once for each item from 0 to nItems - 1, on `nThreads` threads (at least one, no
// more than items). Returns when all are done. An exception of the job (memory that cannot be had)
// ends the work and comes out here.
void runParallel(ParallelJob& job, size_t nItems, unsigned int nThreads);

// One thread for each core, at least one.
unsigned int coreCount();
