// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovLines.h"

#include "tools/import/LineOwners.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <simdjson.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <unordered_map>

namespace {

using simdjson::dom::element;

std::string textOf(const element& object, const char* key)
{
    std::string_view text;
    return object[key].get(text) == simdjson::SUCCESS ? std::string(text) : std::string();
}

int64_t numberOf(const element& object, const char* key)
{
    int64_t number = 0;
    if (object[key].get(number) != simdjson::SUCCESS) {
        // Counts past 63 bits come as unsigned or floating numbers.
        double large = 0;
        number = object[key].get(large) == simdjson::SUCCESS && large > 0 ? INT64_MAX : 0;
    }
    return number;
}

// A line number, or 0 for what is none.
uint32_t lineOf(const element& object, const char* key)
{
    const int64_t number = numberOf(object, key);
    return number > 0 && number <= UINT32_MAX ? static_cast<uint32_t>(number) : 0;
}

// The functions of one file, and the way from a line to its function.
class FileReader
{
public:
    FileReader(std::vector<GcovLineFunction>& functions, const std::string& folder)
        : _functions(functions), _folder(folder)
    {}

    bool read(const element& file);
    uint64_t strayLines() const { return _strayLines; }

private:
    void addFunction(const element& function, const std::string& file);
    void addLine(const element& line);

    std::vector<GcovLineFunction>& _functions;
    const std::string& _folder;
    std::unordered_map<std::string, uint32_t> _bySymbol;
    LineOwners _owners;
    uint64_t _strayLines = 0;
};

bool FileReader::read(const element& file)
{
    simdjson::dom::array functions;
    simdjson::dom::array lines;
    if (file["functions"].get(functions) != simdjson::SUCCESS ||
        file["lines"].get(lines) != simdjson::SUCCESS) {
        return false;
    }
    const std::string name = textOf(file, "file");
    for (const element function : functions) {
        addFunction(function, name);
    }
    _owners.build();
    for (const element line : lines) {
        addLine(line);
    }
    return true;
}

void FileReader::addFunction(const element& function, const std::string& file)
{
    GcovLineFunction entry;
    entry._folder = _folder;
    entry._file = file;
    entry._copy._symbol = textOf(function, "name");
    entry._copy._startLine = lineOf(function, "start_line");
    entry._copy._startColumn = lineOf(function, "start_column");
    entry._copy._endLine = lineOf(function, "end_line");
    entry._copy._endColumn = lineOf(function, "end_column");
    const auto place = static_cast<uint32_t>(_functions.size());
    _owners.add(entry._copy._startLine, entry._copy._endLine, place);
    _bySymbol[entry._copy._symbol] = place;
    _functions.push_back(std::move(entry));
}

void FileReader::addLine(const element& line)
{
    const uint32_t number = lineOf(line, "line_number");
    const auto found = _bySymbol.find(textOf(line, "function_name"));
    const uint32_t place = found != _bySymbol.end() ? found->second : _owners.ownerOf(number);
    if (place == LineOwners::Nobody || number == 0) {
        ++_strayLines;
        return;
    }
    GcovLineFunction& function = _functions[place];
    function._copy._lines.push_back({static_cast<uint32_t>(function._counts.size()), 0, number});
    function._counts.push_back(numberOf(line, "count"));
}

bool parseDocument(const std::string& text, std::vector<GcovLineFunction>& functions,
                   uint64_t& strayLines)
{
    simdjson::dom::parser parser;
    element document;
    simdjson::dom::array files;
    if (parser.parse(text).get(document) != simdjson::SUCCESS ||
        document["files"].get(files) != simdjson::SUCCESS) {
        return false;
    }
    const std::string folder = textOf(document, "current_working_directory");
    for (const element file : files) {
        FileReader reader(functions, folder);
        if (!reader.read(file)) {
            return false;
        }
        strayLines += reader.strayLines();
    }
    return true;
}

// A folder of its own where notes and counters stand side by side, which gcov asks for.
class UnitFolder
{
public:
    explicit UnitFolder(const GccUnitFiles& files)
    {
        std::error_code failure;
        const std::filesystem::path base = std::filesystem::temp_directory_path(failure);
        std::string pattern = (base / "zem-import-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            return;
        }
        _path = pattern;
        _isGood = symlink(files._notes.c_str(), (_path + "/unit.gcno").c_str()) == 0 &&
                  (files._counters.empty() ||
                   symlink(files._counters.c_str(), (_path + "/unit.gcda").c_str()) == 0);
    }
    ~UnitFolder()
    {
        if (!_path.empty()) {
            std::error_code ignored;
            std::filesystem::remove_all(_path, ignored);
        }
    }
    UnitFolder(const UnitFolder&) = delete;
    UnitFolder& operator=(const UnitFolder&) = delete;

    bool isGood() const { return _isGood; }
    const std::string& path() const { return _path; }

private:
    std::string _path;
    bool _isGood = false;
};

bool readAll(int fd, std::string& text)
{
    char piece[65536];
    for (;;) {
        const ssize_t got = read(fd, piece, sizeof(piece));
        if (got == 0) {
            return true;
        }
        if (got > 0) {
            text.append(piece, static_cast<size_t>(got));
        } else if (errno != EINTR) {
            return false;
        }
    }
}

} // namespace

bool GcovLines::parse(const std::string& json)
{
    size_t start = 0;
    bool isAny = false;
    while (start < json.size()) {
        size_t end = json.find('\n', start);
        end = end == std::string::npos ? json.size() : end;
        if (end > start) {
            if (!parseDocument(json.substr(start, end - start), _functions, _strayLines)) {
                return false;
            }
            isAny = true;
        }
        start = end + 1;
    }
    return isAny;
}

bool runGcov(const char* gcov, const GccUnitFiles& files, std::string& json)
{
    const UnitFolder folder(files);
    int ends[2];
    if (!folder.isGood() || pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.path().c_str());
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string words[] = {gcov, "--json-format", "--stdout", "unit.gcno"};
    char* vector[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    pid_t child = 0;
    const bool isStarted = posix_spawnp(&child, gcov, &actions, nullptr, vector, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    bool isRead = isStarted && readAll(ends[0], json);
    close(ends[0]);
    int status = -1;
    if (isStarted) {
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
    }
    return isRead && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
