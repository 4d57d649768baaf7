// SPDX-License-Identifier: MIT
//
// Every report of a program made up from the input, with options and filters, against the same sums
// done the simple way. The input is words of a command line, one a line, then a 0, then what
// decides on sources, functions, blocks and counts (see FuzzBytes).
#include "fuzz/FuzzBytes.h"
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "tests/support/DataFiles.h"
#include "zem/Options/RptCommandLine.h"
#include "zem/Options/RptOptions.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr int MapDescriptor = 900;
constexpr char MapPath[] = "/proc/self/fd/900";

struct Sums
{
    int64_t total = 0;
    int64_t covered = 0;
    int64_t hits = 0;
};

using Row = std::tuple<std::string, int64_t, int64_t, int64_t>;
using Rows = std::multiset<Row>;

// What the options ask for: the filters go to the repository as well.
class Options : public RptOptions
{
public:
    explicit Options(ZEMRepository& repository) : _repository(repository) {}

    void reportType(RptType) override {} // all are made
    void manglingLevel(int) override {}
    void addFilter(int kind, const char* name) override
    {
        _repository.addFilter(kind, name);
        _names[kind].insert(name);
    }
    void sortBy(const char* keys) override { _keys = keys == nullptr ? "" : keys; }
    void showHitCounts() override {}
    void usageHelp() override {}

    bool hides(int kind, const std::string& name) const
    {
        const auto found = _names.find(kind);
        return found != _names.end() && found->second.count(name) == 0;
    }
    const std::string& keys() const { return _keys; }

private:
    ZEMRepository& _repository;
    std::map<int, std::set<std::string>> _names;
    std::string _keys;
};

std::string anyName(FuzzBytes& bytes, const std::vector<const char*>& usual)
{
    const uint32_t which = bytes.below(16);
    return which < usual.size() ? usual[which] : bytes.name(12);
}

// The program, its logs, and what each report has to show of it.
class Program
{
public:
    explicit Program(FuzzBytes& bytes)
    {
        std::set<std::string> paths;
        for (uint32_t n = bytes.below(6); n > 0; --n) {
            addSource(bytes, paths);
        }
        _nLogs = 1 + bytes.below(3);
        for (size_t log = 0; log < _nLogs; ++log) {
            addCounts(bytes);
        }
    }

    std::string mapBytes() const { return mapFile(_sources).bytes(); }
    std::string logBytes(size_t log) const { return logFile(_logs[log]).bytes(); }
    size_t nLogs() const { return _sources.empty() ? 0 : _nLogs; }

    Rows functions(const Options& options) const
    {
        Rows rows;
        eachFunction(options, [&](const std::string&, const std::string& name, const Sums& sums) {
            rows.insert(row(name, sums));
        });
        return rows;
    }

    Rows classes(const Options& options) const
    {
        std::map<std::string, Sums> groups;
        eachFunction(options, [&](const std::string&, const std::string& name, const Sums& sums) {
            const std::string owner = classOf(name);
            if (!owner.empty() && !options.hides('o', owner)) {
                add(groups[owner], sums);
            }
        });
        return rowsOf(groups);
    }

    Rows files(const Options& options) const
    {
        Rows rows;
        for (const auto& file : fileSums(options)) {
            const bool hasFolder = file.first.find('/') != std::string::npos;
            rows.insert(row((hasFolder ? "" : "/") + file.first, file.second));
        }
        return rows;
    }

    Rows directories(const Options& options) const
    {
        std::map<std::string, Sums> groups;
        for (const auto& file : fileSums(options)) {
            const size_t slash = file.first.rfind('/');
            if (slash != std::string::npos && !options.hides('d', file.first.substr(0, slash))) {
                add(groups[file.first.substr(0, slash)], file.second);
            }
        }
        return rowsOf(groups);
    }

    // All blocks of all log records, and those of them that did not run.
    void checkSummary(const ZEMRepository& repository) const
    {
        long wanted = 0;
        long wantedUntested = 0;
        for (const std::vector<LogSource>& log : _logs) {
            for (const LogSource& source : log) {
                wanted += static_cast<long>(source.counts.size());
                wantedUntested += std::count(source.counts.begin(), source.counts.end(), 0u);
            }
        }
        long untested = 0;
        long total = 0;
        repository.coverageSummary(untested, total);
        qipAssert(untested == wantedUntested && total == wanted);
    }

private:
    void addSource(FuzzBytes& bytes, std::set<std::string>& paths)
    {
        MapSource source;
        source.path = anyName(bytes, {"a.c", "/a.c", "src/a.c", "src/b.c", "src/sub/a.c",
                                      "/usr/src/a.c", "src//a.c", "src/"});
        std::vector<MapFunc> functions(bytes.below(5));
        for (MapFunc& function : functions) {
            function.name = anyName(bytes, {"main", "A::run", "A::run__Fv", "A::B::step__FPCci",
                                            "B::step", "::x", "A::", ":", "a:b"});
            for (uint32_t n = bytes.below(4); n > 0; --n) {
                function.blocks.push_back({bytes.below(9), bytes.below(9)});
            }
        }
        source.funcs = functions;
        if (!source.path.empty() && paths.insert(source.path).second) {
            _sources.push_back(source);
        }
    }

    void addCounts(FuzzBytes& bytes)
    {
        std::vector<LogSource> log;
        for (const MapSource& source : _sources) {
            LogSource record = {source.path, MapPath};
            for (const MapFunc& function : source.funcs) {
                for (size_t i = 0; i < function.blocks.size(); ++i) {
                    const uint32_t kind = bytes.below(4);
                    record.counts.push_back(kind == 3 ? bytes.word() : kind);
                }
            }
            log.push_back(record);
        }
        _logs.push_back(log);
    }

    // Calls `take` with file, function and sums of each function that is shown.
    using Take = std::function<void(const std::string&, const std::string&, const Sums&)>;
    void eachFunction(const Options& options, const Take& take) const
    {
        for (size_t i = 0; i < _sources.size(); ++i) {
            size_t block = 0;
            for (const MapFunc& function : _sources[i].funcs) {
                const Sums sums = sumsOf(i, block, function.blocks.size());
                block += function.blocks.size();
                if (!options.hides('F', _sources[i].path) && !options.hides('f', function.name)) {
                    take(_sources[i].path, function.name, sums);
                }
            }
        }
    }

    // What a function filter hides counts as covered in the row of its file.
    std::map<std::string, Sums> fileSums(const Options& options) const
    {
        std::map<std::string, Sums> result;
        for (const MapSource& source : _sources) {
            if (!options.hides('F', source.path)) {
                Sums& sums = result[source.path];
                for (const MapFunc& function : source.funcs) {
                    sums.total += static_cast<int64_t>(function.blocks.size());
                }
                sums.covered = sums.total;
            }
        }
        eachFunction(options, [&](const std::string& path, const std::string&, const Sums& sums) {
            result[path].covered -= sums.total - sums.covered;
            result[path].hits += sums.hits;
        });
        for (auto& file : result) {
            file.second.hits = std::min<int64_t>(file.second.hits, INT_MAX);
        }
        return result;
    }

    // Of `count` blocks of a source from `first` on, over all logs.
    Sums sumsOf(size_t source, size_t first, size_t count) const
    {
        Sums sums;
        for (size_t block = first; block < first + count; ++block) {
            uint64_t hits = 0;
            for (const std::vector<LogSource>& log : _logs) {
                hits = std::min<uint64_t>(hits + log[source].counts[block], UINT32_MAX);
            }
            ++sums.total;
            sums.covered += hits > 0 ? 1 : 0;
            sums.hits += static_cast<int64_t>(hits);
        }
        return sums;
    }

    static std::string classOf(const std::string& name)
    {
        const size_t colon = name.rfind(':');
        if (colon == std::string::npos || colon == 0 || name == "::" ||
            (colon == 1 && name[0] == ':')) {
            return "";
        }
        return name.substr(0, colon == 1 ? 1 : colon - 1);
    }

    static void add(Sums& sums, const Sums& more)
    {
        sums.total += more.total;
        sums.covered += more.covered;
        sums.hits += std::min<int64_t>(more.hits, INT_MAX);
    }

    static Row row(const std::string& label, const Sums& sums)
    {
        return {label, sums.total, sums.covered, std::min<int64_t>(sums.hits, INT_MAX)};
    }

    static Rows rowsOf(const std::map<std::string, Sums>& groups)
    {
        Rows rows;
        for (const auto& group : groups) {
            rows.insert(row(group.first, group.second));
        }
        return rows;
    }

    std::vector<MapSource> _sources;
    std::vector<std::vector<LogSource>> _logs;
    size_t _nLogs = 0;
};

Rows rowsOf(const ZEMRptTable& table)
{
    Rows rows;
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& view = *table._view[i];
        qipAssert(view._label != nullptr);
        rows.insert(Row(view._label, view._totBlk, view._covBlk, view._hits));
    }
    return rows;
}

// Sorts the table by each of the keys; no row gets lost, and each stands where it belongs.
void checkSorts(ZEMRptTable& table, const Rows& rows, const std::string& keys)
{
    for (const char* each : {keys.c_str(), "%F", "#b", "dFf", "n"}) {
        table.sort(each);
        for (int i = 1; i < table._nItems; ++i) {
            qipAssert(ZEMRptTable::compareViews(table._view[i - 1], table._view[i], each) <= 0);
            qipAssert(ZEMRptTable::compareViews(table._view[i], table._view[i - 1], each) >= 0);
        }
    }
    qipAssert(rowsOf(table) == rows);
}

void check(ZEMRptTable table, const Rows& wanted, const std::string& keys)
{
    qipAssert(table.isWhole());
    qipAssert(rowsOf(table) == wanted);
    checkSorts(table, wanted, keys);
    table.deleteRows();
}

// Labels of other levels are names made readable: only the numbers can be told.
void checkLevel(ZEMRptTable table, const Rows& wanted, const std::string& keys)
{
    const auto numbers = [](const Rows& rows) {
        Rows result;
        for (const Row& row : rows) {
            result.insert(Row("", std::get<1>(row), std::get<2>(row), std::get<3>(row)));
        }
        return result;
    };
    const Rows rows = rowsOf(table);
    qipAssert(table.isWhole() && numbers(rows) == numbers(wanted));
    checkSorts(table, rows, keys);
    table.deleteRows();
}

std::vector<std::string> wordsOf(const std::string& text)
{
    // With two plain words in front no terminator is alone, which would end the program.
    std::vector<std::string> words = {"zem", "log", ""};
    for (const char c : text) {
        if (c == '\n') {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    return words;
}

void checkReports(const Program& program, const Options& options, const ZEMRepository& repository)
{
    const Rows functions = program.functions(options);
    const std::string& keys = options.keys();
    check(repository.viewByFunction(0), functions, keys);
    check(repository.viewByFile(), program.files(options), keys);
    check(repository.viewByDirectory(), program.directories(options), keys);
    check(repository.viewByClass(), program.classes(options), keys);
    for (int level = 1; level <= 3; ++level) {
        checkLevel(repository.viewByFunction(level), functions, keys);
    }
    program.checkSummary(repository);
}

void load(const std::string& bytes, ZEMRepository& repository)
{
    const MemoryFile log(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    qipAssert(repository.processFile(log.path().c_str()) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzBytes bytes(data, size);
    std::vector<std::string> words = wordsOf(bytes.until('\0'));
    const Program program(bytes);
    const std::string mapBytes = program.mapBytes();
    const MemoryFile map(reinterpret_cast<const uint8_t*>(mapBytes.data()), mapBytes.size());
    // NOLINTNEXTLINE(android-cloexec-dup): nothing is executed
    if (dup2(map.descriptor(), MapDescriptor) < 0) {
        std::abort();
    }
    ZEMRepository repository;
    for (size_t log = 0; log < program.nLogs(); ++log) {
        load(program.logBytes(log), repository);
    }
    close(MapDescriptor);

    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    int argc = static_cast<int>(words.size());
    Options options(repository);
    RptCommandLine::parse(options, &argc, argv.data());
    checkReports(program, options, repository);
    return 0;
}
