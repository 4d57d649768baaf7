// SPDX-License-Identifier: MIT
#include "tools/compare/Findings.h"

#include <cstring>
#include <ostream>
#include <sstream>

namespace {

struct ClassText
{
    const char* word;
    const char* meaning;
};

const ClassText texts[Findings::NClasses] = {
    {"unit-failed", "a unit that could not be read"},
    {"file-missing", "gcov has lines of the file, the map does not"},
    {"source-missing", "the source file is not there, so nothing is drawn"},
    {"function-missing", "gcov has the function, the map has none at its place"},
    {"function-dead", "gcov counts entries, no block of the row ran"},
    {"function-ran", "gcov counts no entry and no line, a block of the row ran"},
    {"function-inlined", "never entered, but its lines ran where it was inlined"},
    {"function-shared", "never entered, but shows a line for another function that ran there"},
    {"function-part", "a row for the lines that a function has in another file"},
    {"function-extra", "a row where gcov has no function"},
    {"line-ran-red", "gcov counts runs, drawn red"},
    {"line-dead-black", "gcov counts none and no block ran, not drawn red"},
    {"line-missing", "gcov has the line, no block covers it"},
    {"line-stray", "a mark on a line that no block touches"},
    {"line-passed", "a block that ran touches the line and does not end there: gcov counts 0"},
    {"line-passed-red", "the same, but drawn red"},
    {"line-made", "a line that only functions made by the compiler touch, which gcov leaves out"},
    {"line-unlisted", "a line that a function's blocks touch and gcov does not list"},
    {"line-past-65535", "past the last line that a block can name: no mark"},
    {"line-past-end", "past the end of the source file, so nothing is drawn"},
    {"text-red", "text without code inside a block that never ran"},
    {"name-simple", "the name is not c++filt's"},
    {"name-extended", "the name with parameters is not c++filt's"},
    {"name-full", "the name with const and volatile is not c++filt's"},
};

constexpr uint64_t AnyNumber = UINT64_MAX;

int classOf(const std::string& word)
{
    for (int i = 0; i < Findings::NClasses; ++i) {
        if (word == texts[i].word) {
            return i;
        }
    }
    return -1;
}

} // namespace

void Findings::add(Class which, const std::string& example)
{
    ++_counts[which];
    if (wantsExample(which)) {
        _examples[which].push_back(example);
    }
}

bool Findings::allow(const std::string& word, uint64_t most)
{
    const int which = classOf(word);
    if (which < 0) {
        return false;
    }
    _allowed[which] = most;
    return true;
}

bool Findings::allowListed(std::istream& text, std::string& problem)
{
    std::string line;
    while (std::getline(text, line)) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string word;
        if (!(words >> word)) {
            continue;
        }
        uint64_t most = AnyNumber;
        std::string rest;
        if (!words.eof()) {
            words >> std::ws;
        }
        const bool isNumber = words.eof() || (words >> most && !(words >> rest));
        if (!isNumber || !allow(word, most)) {
            problem = line;
            return false;
        }
    }
    return true;
}

bool Findings::isAllowed(int which) const
{
    const auto found = _allowed.find(which);
    return found != _allowed.end() && _counts[which] <= found->second;
}

bool Findings::isGood() const
{
    for (int i = 0; i < NClasses; ++i) {
        if (_counts[i] > 0 && !isAllowed(i)) {
            return false;
        }
    }
    return true;
}

void Findings::write(std::ostream& out) const
{
    for (int i = 0; i < NClasses; ++i) {
        if (_counts[i] == 0) {
            continue;
        }
        out << texts[i].word << "  " << _counts[i] << (isAllowed(i) ? " (allowed)" : "") << "  "
            << texts[i].meaning << '\n';
        for (const std::string& example : _examples[i]) {
            out << "    " << example << '\n';
        }
    }
    for (const auto& allowed : _allowed) {
        if (_counts[allowed.first] == 0) {
            out << texts[allowed.first].word << "  0  allowed, but did not occur\n";
        }
    }
}

void Findings::writeClasses(std::ostream& out)
{
    for (const ClassText& text : texts) {
        out << "  " << text.word << std::string(18 - std::strlen(text.word), ' ') << text.meaning
            << '\n';
    }
}
