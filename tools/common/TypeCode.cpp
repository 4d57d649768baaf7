// SPDX-License-Identifier: MIT
#include "tools/common/TypeCode.h"

#include <cstring>

namespace {

// Deeper function types than this have no code; the source's nesting drives the recursion.
constexpr int DeepestNesting = 32;

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
    {"...", "e"},
};

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
    text = trimmed(text.substr(0, text.size() - std::strlen(end)));
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

bool appendName(const std::string& name, std::string& code)
{
    std::string parts;
    int count = 0;
    size_t start = 0;
    for (;;) {
        const size_t end = name.find("::", start);
        const std::string part = name.substr(start, end - start);
        if (part.empty() || ++count > 9) {
            return false;
        }
        parts += std::to_string(part.size()) + part;
        if (end == std::string::npos) {
            break;
        }
        start = end + 2;
    }
    if (count > 1) {
        code += 'Q';
        code += static_cast<char>('0' + count);
    }
    code += parts;
    return true;
}

bool appendList(const std::string& types, std::string& code, int nesting);

bool appendBase(const std::string& type, std::string& code)
{
    for (const BaseType& base : baseTypes) {
        if (type == base.name) {
            code += base.code;
            return true;
        }
    }
    return appendName(type, code);
}

// Takes the marks at the end of the text, the outermost stands last, and appends their codes.
bool appendMarks(std::string& type, std::string& code)
{
    for (;;) {
        if (endsWith(type, "&&") || endsWith(type, "]")) {
            return false;
        }
        if (takeEnd(type, "::*")) {
            const size_t blank = type.rfind(' ');
            const size_t start = blank == std::string::npos ? 0 : blank + 1;
            code += 'M';
            if (!appendName(type.substr(start), code)) {
                return false;
            }
            type = trimmed(type.substr(0, start));
        } else if (takeEnd(type, "*")) {
            code += 'P';
        } else if (takeEnd(type, "&")) {
            code += 'R';
        } else if (takeEnd(type, " const")) {
            code += 'C';
        } else if (takeEnd(type, " volatile")) {
            code += 'V';
        } else if (type == "const" && takeEnd(type, "const")) {
            code += 'C';
        } else {
            return true;
        }
    }
}

bool appendType(const std::string& text, std::string& code, int nesting)
{
    if (nesting > DeepestNesting) {
        return false;
    }
    std::string type = trimmed(text);
    if (!appendMarks(type, code)) {
        return false;
    }
    if (!endsWith(type, ")")) {
        return appendBase(type, code);
    }
    // "result (marks)(parameters)"; a mark behind the parameters qualifies a member function.
    if (type != trimmed(text)) {
        return false;
    }
    const size_t parameters = openingBracket(type);
    if (parameters == std::string::npos || parameters == 0 || type[parameters - 1] != ')') {
        return false;
    }
    const std::string list = type.substr(parameters + 1, type.size() - parameters - 2);
    const std::string front = type.substr(0, parameters);
    const size_t bracket = openingBracket(front);
    if (bracket == std::string::npos) {
        return false;
    }
    std::string marks = front.substr(bracket + 1, front.size() - bracket - 2);
    if (!appendMarks(marks, code) || !marks.empty()) {
        return false;
    }
    code += 'F';
    if (!appendList(list, code, nesting + 1)) {
        return false;
    }
    code += '_';
    return appendType(front.substr(0, bracket), code, nesting + 1);
}

bool appendList(const std::string& types, std::string& code, int nesting)
{
    if (trimmed(types).empty()) {
        code += 'v';
        return true;
    }
    int depth = 0;
    size_t start = 0;
    for (size_t i = 0; i <= types.size(); ++i) {
        if (i == types.size() || (types[i] == ',' && depth == 0)) {
            if (!appendType(types.substr(start, i - start), code, nesting)) {
                return false;
            }
            start = i + 1;
        } else if (std::strchr("<([{", types[i]) != nullptr) {
            ++depth;
        } else if (std::strchr(")]}", types[i]) != nullptr ||
                   (types[i] == '>' && (i == 0 || types[i - 1] != '-'))) {
            --depth;
        }
    }
    return true;
}

} // namespace

bool appendTypeCodes(const std::string& types, std::string& code)
{
    return appendList(types, code, 0);
}
