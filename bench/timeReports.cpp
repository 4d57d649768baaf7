// SPDX-License-Identifier: MIT
//
// Times the reports of one log file inside the process, against qsort with strcmp of the same
// labels. Prints one "NAME SECONDS" a line, the best of five.
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int Runs = 5;

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// The best time of `work`; `prepare` is not timed.
double best(const std::function<void()>& prepare, const std::function<void()>& work)
{
    double least = 0;
    for (int i = 0; i < Runs; ++i) {
        prepare();
        const Clock::time_point start = Clock::now();
        work();
        const double seconds = secondsSince(start);
        least = i == 0 ? seconds : std::min(least, seconds);
    }
    return least;
}

void print(const std::string& name, double seconds)
{
    std::printf("%s %.6f\n", name.c_str(), seconds);
}

int compareLabels(const void* a, const void* b)
{
    return std::strcmp(*static_cast<char* const*>(a), *static_cast<char* const*>(b));
}

void timeReport(const std::string& name, const std::function<ZEMRptTable()>& view)
{
    ZEMRptTable table;
    print(name, best([&table] { table.deleteRows(); }, [&table, &view] { table = view(); }));
    table.deleteRows();
}

// The same rows in the repository's order for every sort.
void timeSorts(ZEMRptTable& table)
{
    const size_t count = static_cast<size_t>(table._nItems);
    const std::vector<ZEMView*> order(table._view, table._view + count);
    std::vector<const char*> labels;
    print("yardstick",
          best(
              [&] {
                  labels.clear();
                  for (const ZEMView* row : order) {
                      labels.push_back(row->_label);
                  }
              },
              [&] { qsort(labels.data(), labels.size(), sizeof labels[0], compareLabels); }));
    for (const char* keys : {"d", "F", "f", "%", "#", "b", "dF", "Ff", "%b", "b#", "#f", "%f"}) {
        print(std::string("sort-") + keys,
              best([&] { std::copy(order.begin(), order.end(), table._view); },
                   [&] { table.sort(keys); }));
    }
}

} // namespace

int main(int argc, char** argv)
{
    ZEMRepository repository;
    if (argc != 2 || repository.processFile(argv[1]) < 0) {
        std::fprintf(stderr, "usage: %s LOG\n", argv[0]);
        return 2;
    }
    timeReport("stored", [&repository] { return repository.viewByFunction(0); });
    timeReport("function", [&repository] { return repository.viewByFunction(1); });
    timeReport("class", [&repository] { return repository.viewByClass(); });
    timeReport("file", [&repository] { return repository.viewByFile(); });
    timeReport("directory", [&repository] { return repository.viewByDirectory(); });
    ZEMRptTable table = repository.viewByFunction(1);
    timeSorts(table);
    table.deleteRows();
    return 0;
}
