// SPDX-License-Identifier: MIT
#include "tools/run/RunRequest.h"

#include "tools/run/logName.h"

#include <cstring>

namespace {

// Options of zem-import that mean the same whatever the counters are.
const char* const importFlags[] = {"--system",     "--instances",  "--relative",
                                   "--full-names", "--no-markers", nullptr};
const char* const importValues[] = {"--only", "--exclude", "--map", nullptr};

bool isOneOf(const std::string& word, const char* const* words)
{
    while (*words != nullptr && word != *words) {
        ++words;
    }
    return *words != nullptr;
}

bool isOption(const char* word)
{
    return word[0] == '-' && word[1] != '\0';
}

} // namespace

// Returns how many words the option at words[0] takes, 0 when there is no such option or its value
// is missing.
int RunRequest::takeOption(char** words)
{
    const std::string option = words[0];
    if (option == "--view" || option == "--each") {
        (option == "--view" ? _isViewed : _isEach) = true;
        return 1;
    }
    if (isOneOf(option, importFlags)) {
        _importWords.push_back(option);
        return 1;
    }
    if (words[1] == nullptr) {
        return 0;
    }
    if (option == "--binary") {
        int taken = 1;
        for (; words[taken] != nullptr && !isOption(words[taken]); ++taken) {
            _binaries.emplace_back(words[taken]);
        }
        return taken > 1 ? taken : 0;
    }
    if (option == "--build") {
        _build = words[1];
    } else if (option == "-o") {
        _folder = words[1];
    } else if (option == "--name") {
        _name = words[1];
    } else if (isOneOf(option, importValues)) {
        _importWords.push_back(option);
        _importWords.emplace_back(words[1]);
    } else {
        return 0;
    }
    return 2;
}

std::string RunRequest::check() const
{
    if (_command == nullptr || *_command == nullptr) {
        return "the command to run is missing";
    }
    if (_folder.empty()) {
        return "the folder to write into has no name: -o ''";
    }
    if (_name.find('/') != std::string::npos) {
        return "not the name of a file: " + _name;
    }
    if (!_build.empty() && !_binaries.empty()) {
        return "--build and --binary exclude each other";
    }
    return "";
}

std::string RunRequest::read(char** words)
{
    while (*words != nullptr && isOption(*words)) {
        if (std::strcmp(*words, "--") == 0) {
            ++words;
            break;
        }
        if (std::strcmp(*words, "--help") == 0 || std::strcmp(*words, "--version") == 0) {
            _wanted = std::strcmp(*words, "--help") == 0 ? Help : Version;
            return "";
        }
        const int taken = takeOption(words);
        if (taken == 0) {
            return std::string("unknown option, or its value is missing: ") + *words;
        }
        words += taken;
    }
    _command = words;
    std::string problem = check();
    if (problem.empty() && _name.empty()) {
        _name = logName(baseName(*_command));
    }
    return problem;
}
