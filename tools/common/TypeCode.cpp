// SPDX-License-Identifier: MIT
#include "tools/common/TypeCode.h"

#include "tools/common/NameText.h"

#include <algorithm>
#include <cstring>

namespace {

// Deeper function types are written as they stand; the source's nesting drives the recursion.
constexpr int DeepestNesting = 32;
constexpr size_t MostPartsOfADigit = 9;
constexpr int AnyDepth = 1000000;

struct BaseType
{
    const char* name;
    const char* code;
};

const BaseType baseTypes[] = {
    {"void", "v"},          {"long long", "x"},      {"unsigned long long", "Ux"},
    {"long", "l"},          {"unsigned long", "Ul"}, {"int", "i"},
    {"unsigned int", "Ui"}, {"short", "s"},          {"unsigned short", "Us"},
    {"char", "c"},          {"signed char", "Sc"},   {"unsigned char", "Uc"},
    {"long double", "r"},   {"double", "d"},         {"float", "f"},
};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string trimmed(const std::string& text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool endsWith(const std::string& text, const char* end)
{
    const size_t length = std::strlen(end);
    return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

// Takes `end` and the blanks before it from the text. Returns false when it ends in something else.
bool takeEnd(std::string& text, const char* end)
{
    if (!endsWith(text, end)) {
        return false;
    }
    text.resize(text.size() - std::strlen(end));
    text.resize(text.find_last_not_of(' ') + 1);
    return true;
}

// The place of the bracket that the text's last character closes, npos when there is none.
size_t openingBracket(const std::string& text)
{
    int depth = 0;
    for (size_t i = text.size(); i-- > 0;) {
        if (text[i] == ')') {
            ++depth;
        } else if (text[i] == '(' && --depth == 0) {
            return i;
        }
    }
    return std::string::npos;
}

// Encodes one list.
class TypeEncoder
{
public:
    TypeEncoder(std::string& code, size_t& nChanged) : _code(code), _nChanged(nChanged) {}

    bool list(const std::string& types, int nesting);
    bool function(const std::string& name, const std::string& types);
    bool name(const std::string& text, std::string& codes);

private:
    // The codes before a base: of its marks, the outermost first, and of the base's own qualifiers.
    struct Marks
    {
        std::string _codes;
        std::string _base;
        bool _hasReference = false;
        bool _hasPointer = false;
    };

    bool type(const std::string& text, int nesting);
    bool functionType(const std::string& type, const Marks& marks, int nesting);
    bool takeMarks(std::string& type, Marks& marks);
    bool takeMemberPointer(std::string& type, std::string& codes);
    void array(std::string& type, Marks& marks);
    bool base(const std::string& type, const Marks& marks);

    std::string& _code;
    size_t& _nChanged;
};

// A ':' that is none of a pair: "auto:1", "a?b : c".
bool hasSingleColon(const std::string& name)
{
    for (size_t at = name.find(':'); at != std::string::npos; at = name.find(':', at + 2)) {
        if (at + 1 == name.size() || name[at + 1] != ':') {
            return true;
        }
    }
    return false;
}

// One name, its parts between "::". Changes it when it cannot be written as it stands.
bool TypeEncoder::name(const std::string& text, std::string& codes)
{
    std::string name = text;
    if (hasSingleColon(name)) {
        name = withoutQualifiers(name, AnyDepth);
        ++_nChanged;
    }
    if (name.compare(0, 2, "::") == 0) {
        name.erase(0, 2);
        ++_nChanged;
    }
    const size_t count = partsOf(name);
    if (count > MostPartsOfADigit) {
        codes.append("Q_").append(std::to_string(count)).append("_");
    } else if (count > 1) {
        codes += 'Q';
        codes += static_cast<char>('0' + count);
    }
    size_t start = 0;
    for (;;) {
        const size_t end = name.find("::", start);
        const std::string part = name.substr(start, end - start);
        if (part.empty() || isDigit(part.front())) {
            return false;
        }
        codes += std::to_string(part.size()) + part;
        if (end == std::string::npos) {
            return true;
        }
        start = end + 2;
    }
}

bool TypeEncoder::base(const std::string& type, const Marks& marks)
{
    for (const BaseType& base : baseTypes) {
        if (type == base.name) {
            _code += marks._codes + marks._base + base.code;
            return true;
        }
    }
    _code += marks._codes + marks._base;
    return name(type, _code);
}

// Takes "Class::*" off the end of the type.
bool TypeEncoder::takeMemberPointer(std::string& type, std::string& codes)
{
    std::string klass = type;
    (void)takeEnd(klass, "::*");
    const NameText text(klass);
    size_t start = klass.size();
    // A class may hold blanks in its brackets.
    while (start > 0 && klass[start - 1] != ' ' && klass[start - 1] != '(') {
        --start;
        const size_t partner = text.partner(start);
        start = partner != NameText::None && partner < start ? partner : start;
    }
    std::string code;
    if (!name(klass.substr(start), code)) {
        return false;
    }
    codes += 'M';
    codes += code;
    type = trimmed(klass.substr(0, start));
    return true;
}

// Takes the marks at the end of the text, the outermost stands last.
bool TypeEncoder::takeMarks(std::string& type, Marks& marks)
{
    for (;;) {
        if (endsWith(type, "::*")) {
            marks._hasPointer = true;
            marks._codes += marks._base;
            marks._base.clear();
            if (!takeMemberPointer(type, marks._codes)) {
                return false;
            }
            continue;
        }
        const char* code = nullptr;
        if (takeEnd(type, "&&")) {
            code = "RR";
        } else if (takeEnd(type, "&")) {
            code = "R";
        } else if (takeEnd(type, "*")) {
            code = "P";
        }
        if (code != nullptr) {
            marks._codes += marks._base + code;
            marks._base.clear();
            marks._hasReference = marks._hasReference || *code == 'R';
            marks._hasPointer = marks._hasPointer || *code == 'P';
        } else if (takeEnd(type, " const")) {
            marks._base.insert(0, "C"); // "const volatile", as people write it
        } else if (takeEnd(type, " volatile")) {
            marks._base += 'V';
        } else {
            return true;
        }
    }
}

// "char const (&) [5]" is a name, but its "const" has a code.
void TypeEncoder::array(std::string& type, Marks& marks)
{
    const NameText text(type);
    for (size_t i = 0; i < type.size(); i = text.pastBrackets(i) + 1) {
        for (const char* word : {" const", " volatile"}) {
            const size_t length = std::strlen(word);
            while (type.compare(i, length, word) == 0 &&
                   (type.compare(i + length, 2, " (") == 0 ||
                    type.compare(i + length, 2, " [") == 0 ||
                    type.compare(i + length, 9, " volatile") == 0)) {
                type.erase(i, length);
                marks._base += word[1] == 'c' ? 'C' : 'V';
                return array(type, marks);
            }
        }
    }
}

// "result (marks)(parameters)", whose own qualifiers are those of a member function.
bool TypeEncoder::functionType(const std::string& type, const Marks& marks, int nesting)
{
    const size_t parameters = openingBracket(type);
    if (marks._hasReference || marks._hasPointer || parameters == std::string::npos ||
        parameters == 0 || type[parameters - 1] != ')') {
        return false;
    }
    const std::string front = type.substr(0, parameters);
    const size_t bracket = openingBracket(front);
    if (bracket == std::string::npos || bracket == 0) {
        return false;
    }
    std::string inner = front.substr(bracket + 1, front.size() - bracket - 2);
    Marks innerMarks;
    if (!takeMarks(inner, innerMarks) || !inner.empty()) {
        return false;
    }
    _code += innerMarks._codes + innerMarks._base + marks._base + 'F';
    if (!list(type.substr(parameters + 1, type.size() - parameters - 2), nesting + 1)) {
        return false;
    }
    _code += '_';
    const std::string result = trimmed(front.substr(0, bracket));
    return this->type(result, nesting + 1);
}

bool TypeEncoder::type(const std::string& text, int nesting)
{
    std::string type = trimmed(text);
    Marks marks;
    if (type.empty()) {
        return false;
    }
    const bool isGood = takeMarks(type, marks) && !type.empty();
    // "void (S::*)() noexcept const": the mark is the function's.
    if (!isGood || endsWith(type, " noexcept")) {
        return name(trimmed(text), _code);
    }
    if (endsWith(type, "]")) {
        array(type, marks);
    }
    if (!endsWith(type, ")")) {
        return base(type, marks);
    }
    const size_t length = _code.size();
    const size_t nChanged = _nChanged;
    if (nesting < DeepestNesting && functionType(type, marks, nesting)) {
        return true;
    }
    _code.resize(length);
    _nChanged = nChanged;
    // "void (S::*)() &": the mark is the member function's.
    const size_t parameters = openingBracket(type);
    const bool isFunction =
        parameters != std::string::npos && parameters > 0 && type[parameters - 1] == ')';
    if (isFunction) {
        return name(trimmed(text), _code);
    }
    _code += marks._codes + marks._base;
    return name(type, _code);
}

bool TypeEncoder::list(const std::string& types, int nesting)
{
    const std::vector<std::string> all = splitList(types);
    if (all.empty()) {
        _code += 'v';
        return true;
    }
    for (const std::string& one : all) {
        if (one == "...") {
            _code += 'e';
            return &one == &all.back();
        }
        if (!type(one, nesting)) {
            return false;
        }
    }
    return true;
}

// A function type shows as its result and the list in parentheses.
bool TypeEncoder::function(const std::string& name, const std::string& types)
{
    _code += 'F';
    if (!list(types, 1)) {
        return false;
    }
    _code += '_';
    return this->name(name, _code);
}

} // namespace

bool appendTypeCodes(const std::string& types, std::string& code, size_t& nChanged)
{
    return TypeEncoder(code, nChanged).list(types, 0);
}

bool appendFunctionCode(const std::string& name, const std::string& types, std::string& code,
                        size_t& nChanged)
{
    return TypeEncoder(code, nChanged).function(name, types);
}

bool appendNameCode(const std::string& name, std::string& code, size_t& nChanged)
{
    return TypeEncoder(code, nChanged).name(name, code);
}
