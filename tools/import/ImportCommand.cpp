// SPDX-License-Identifier: MIT
#include "tools/import/ImportCommand.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/cleanMaps.h"
#include "tools/common/shellWord.h"
#include "tools/import/ImportJob.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ostream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int ExitGood = 0;
constexpr int ExitBad = 1;

const char program[] = "zem-import";

bool isThere(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

// Why a file or folder cannot be read, which is there as far as anybody knows; null when it can, or
// is not there.
const char* unreadable(const std::string& path)
{
    const bool isHidden = access(path.c_str(), R_OK) != 0 && errno != ENOENT && errno != ENOTDIR;
    return isHidden ? std::strerror(errno) : nullptr;
}

bool isAmong(char** words, const char* wanted)
{
    while (*words != nullptr && std::strcmp(*words, wanted) != 0) {
        ++words;
    }
    return *words != nullptr;
}

// As they can be typed.
std::string typed(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + shellWord(word);
    }
    return text;
}

std::string joined(const std::vector<std::string>& words, const char* between)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : between) + word;
    }
    return text;
}

} // namespace

ImportCommand::ImportCommand(const std::vector<ImportKind>& kinds, const char* version,
                             std::ostream& out, std::ostream& err)
    : _kinds(kinds), _version(version), _out(out), _err(err)
{}

void ImportCommand::usage(std::ostream& out) const
{
    out << "Usage: zem-import [KIND] [options] INPUT...\n"
           "Write a map file and log files that zem shows, from the coverage of another tool.\n"
           "Without KIND it is taken from what INPUT holds.\n";
    for (const ImportKind& kind : _kinds) {
        out << "\nzem-import " << kind._name << " [options] " << kind._inputs << "\n  "
            << kind._purpose << "\n";
        kind._make()->usage(out);
    }
    out << "\nAll kinds:\n";
    ImportOptions::usage(out);
    out << "  --help           print this text\n"
           "  --version        print the version\n"
           "\nzem-import --clean DIR\n"
           "  remove the maps in DIR that no log there names\n";
}

int ImportCommand::misuse(const std::string& problem)
{
    _err << program << ": " << qipVisibleText(problem.c_str()) << "\nTry zem-import --help.\n";
    return ExitBad;
}

std::string ImportCommand::allKinds() const
{
    std::vector<std::string> names;
    for (const ImportKind& kind : _kinds) {
        names.emplace_back(kind._name);
    }
    return joined(names, ", ");
}

const ImportKind* ImportCommand::findKind(const std::string& name) const
{
    const auto found = std::find_if(_kinds.begin(), _kinds.end(),
                                    [&name](const ImportKind& kind) { return name == kind._name; });
    return found == _kinds.end() ? nullptr : &*found;
}

ImportCommand::Reading ImportCommand::read(const ImportKind& kind, char** words) const
{
    Reading reading;
    reading._kind = &kind;
    reading._importer = kind._make();
    while (*words != nullptr && reading._unknown == nullptr) {
        if (words[0][0] != '-') {
            reading._importer->input(*words);
            reading._options._inputs.emplace_back(*words++);
            continue;
        }
        int taken = reading._options.take(words);
        taken = taken != 0 ? taken : reading._importer->option(words);
        reading._unknown = taken == 0 ? words : nullptr;
        words += taken;
    }
    return reading;
}

int ImportCommand::import(const Reading& reading)
{
    if (reading._unknown != nullptr) {
        return misuse("unknown option, or its value is missing: " + std::string(*reading._unknown));
    }
    if (reading._options._inputs.empty()) {
        return misuse(std::string("what to read is missing: ") + reading._kind->_inputs);
    }
    const std::string problem = reading._options.problem();
    if (!problem.empty()) {
        return misuse(problem);
    }
    return ImportJob(*reading._importer, reading._options, _out, _err).run() ? ExitGood : ExitBad;
}

bool ImportCommand::checkInputs(const std::vector<std::string>& inputs)
{
    for (const std::string& input : inputs) {
        const char* const reason = unreadable(input);
        if (reason != nullptr) {
            _err << program << ": cannot read " << qipVisibleText(input.c_str()) << ": " << reason
                 << '\n';
            return false;
        }
        if (isThere(input)) {
            continue;
        }
        if (findKind(input) != nullptr) {
            (void)misuse("the kind of coverage comes first: zem-import " + input +
                         " [options] INPUT...");
        } else {
            (void)misuse("neither a file or folder nor a kind of coverage (" + allKinds() +
                         "): " + input);
        }
        return false;
    }
    return true;
}

// The names of the kinds that can read an input, as "gcc or llvm"; empty when none can.
std::string ImportCommand::kindsOf(const std::string& input,
                                   const std::vector<Reading>& readings) const
{
    std::vector<std::string> names;
    for (const Reading& reading : readings) {
        if (reading._importer->recognises(input.c_str())) {
            names.emplace_back(reading._kind->_name);
        }
    }
    return joined(names, " or ");
}

int ImportCommand::failToChoose(const std::vector<Reading>& readings,
                                const std::vector<size_t>& fitting)
{
    const std::vector<std::string>& inputs = readings.front()._options._inputs;
    if (fitting.size() > 1) {
        std::vector<std::string> commands;
        commands.reserve(fitting.size());
        for (const size_t i : fitting) {
            commands.push_back(std::string("zem-import ") + readings[i]._kind->_name + " ...");
        }
        return misuse(typed(inputs) +
                      " may be of several kinds; name one: " + joined(commands, ", or "));
    }
    std::vector<std::string> found;
    for (const std::string& input : inputs) {
        const std::string kinds = kindsOf(input, readings);
        if (kinds.empty()) {
            return misuse("cannot tell what coverage is in " + input +
                          "; name the kind: zem-import KIND " + typed(inputs) +
                          ", where KIND is one of " + allKinds());
        }
        found.emplace_back(input);
        found.back() += " is " + kinds;
    }
    return misuse("one import is of one kind: " + joined(found, ", "));
}

int ImportCommand::choose(std::vector<Reading>& readings)
{
    const std::vector<std::string>& inputs = readings.front()._options._inputs;
    std::vector<size_t> fitting;
    for (size_t i = 0; i < readings.size(); ++i) {
        const bool fits = std::all_of(inputs.begin(), inputs.end(), [&](const std::string& input) {
            return readings[i]._importer->recognises(input.c_str());
        });
        if (fits) {
            fitting.push_back(i);
        }
    }
    if (fitting.size() != 1) {
        return failToChoose(readings, fitting);
    }
    const Reading& reading = readings[fitting[0]];
    const std::string more =
        inputs.size() == 1 ? "" : " and " + std::to_string(inputs.size() - 1) + " more";
    _out << program << ": taking " << qipVisibleText(inputs[0].c_str()) << more << " as "
         << reading._kind->_name << '\n';
    return import(reading);
}

// Those kinds come into question that know all options.
int ImportCommand::guess(char** words)
{
    std::vector<Reading> readings;
    char** unknown = words;
    for (const ImportKind& kind : _kinds) {
        Reading reading = read(kind, words);
        if (reading._unknown == nullptr) {
            readings.push_back(std::move(reading));
        } else {
            unknown = std::max(unknown, reading._unknown);
        }
    }
    if (readings.empty()) {
        return misuse("unknown option, or its value is missing: " + std::string(*unknown));
    }
    const std::vector<std::string>& inputs = readings.front()._options._inputs;
    if (inputs.empty()) {
        return misuse("what to read is missing");
    }
    return checkInputs(inputs) ? choose(readings) : ExitBad;
}

int ImportCommand::clean(char** words)
{
    if (words[1] == nullptr || words[2] != nullptr) {
        return misuse("one folder is wanted behind --clean");
    }
    CleanedMaps result;
    const bool isGood = cleanMaps(words[1], result);
    for (const std::string& name : result._removed) {
        _out << program << ": removed " << qipVisibleText(name.c_str()) << '\n';
    }
    if (!isGood) {
        _err << program << ": cannot clean " << qipVisibleText(words[1]) << ": "
             << qipVisibleText(result._problem.c_str()) << '\n';
        return ExitBad;
    }
    _out << program << ": " << result._removed.size() << " maps removed, " << result._kept
         << " that logs name are kept\n";
    return ExitGood;
}

int ImportCommand::run(char** words)
{
    if (words[0] == nullptr) {
        usage(_err);
        return ExitBad;
    }
    if (isAmong(words, "--help")) {
        usage(_out);
        return ExitGood;
    }
    if (isAmong(words, "--version")) {
        _out << program << ' ' << _version << '\n';
        return ExitGood;
    }
    if (std::strcmp(words[0], "--clean") == 0) {
        return clean(words);
    }
    const ImportKind* kind = findKind(words[0]);
    return kind == nullptr ? guess(words) : import(read(*kind, words + 1));
}
