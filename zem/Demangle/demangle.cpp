// SPDX-License-Identifier: MIT
#include "zem/Demangle/demangle.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

// Set by nobody here: marks decoded names for a caller that mixes them with others.
int indicate_cplusplus = 0;

namespace {

struct Operator
{
    const char* code;
    const char* text;
};

constexpr Operator optable[] = {
    {"nw", "new"}, {"dl", "delete"}, {"as", "="},   {"ne", "!="},   {"eq", "=="},  {"ge", ">="},
    {"gt", ">"},   {"le", "<="},     {"lt", "<"},   {"pl", "+"},    {"apl", "+="}, {"mi", "-"},
    {"ami", "-="}, {"ml", "*"},      {"aml", "*="}, {"md", "%"},    {"amd", "%="}, {"dv", "/"},
    {"adv", "/="}, {"aa", "&&"},     {"oo", "||"},  {"nt", "!"},    {"pp", "++"},  {"mm", "--"},
    {"or", "|"},   {"aor", "|="},    {"er", "^"},   {"aer", "^="},  {"ad", "&"},   {"aad", "&="},
    {"co", "~"},   {"cl", "()"},     {"ls", "<<"},  {"als", "<<="}, {"rs", ">>"},  {"ars", ">>="},
    {"rf", "->"},  {"vc", "[]"},     {"cm", ","},   {"cn", "?:"},   {"mx", ">?"},  {"mn", "<?"},
    {"mr", "->*"}};

constexpr size_t LongestSlack = 64 * 1024; // of a readable name, in characters
constexpr size_t LongestFactor = 64;       // times the encoded one's length
constexpr int DeepestType = 1000;          // nested function types

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// A stretch of the encoded name. Reading past its end gives zero bytes.
struct Cursor
{
    const char* at;
    const char* end;

    char peek(size_t ahead = 0) const
    {
        return ahead < static_cast<size_t>(end - at) ? at[ahead] : '\0';
    }
    bool atEnd() const { return at == end; }
    bool take(char c)
    {
        if (peek() != c || atEnd()) {
            return false;
        }
        ++at;
        return true;
    }
};

// The parameters of one list, as encoded: what T and N refer to, counted from 1.
using TypeList = std::vector<Cursor>;

// const and volatile that wait for what they qualify.
struct Qualifiers
{
    std::string text; // words separated by blanks

    void add(const char* word)
    {
        if (text.find(word) == std::string::npos) {
            text += text.empty() ? "" : " ";
            text += word;
        }
    }
};

class Decoder
{
public:
    Decoder(const char* encoded, int mode)
        : _begin(encoded), _end(encoded + std::strlen(encoded)), _mode(mode),
          _longest(LongestSlack + LongestFactor * static_cast<size_t>(_end - _begin)), _work(0)
    {}

    // Decodes the whole name into `name`; false when it is no encoded name.
    bool decode(std::string& name);

private:
    enum Kind { Ordinary, Constructor, Destructor };

    bool decodeOperator(const char* code, const char* codeEnd, std::string& name);
    bool decodeMember(Cursor& in, Kind kind, const std::string& prefix, std::string& name);
    bool decodeTemplate(Cursor& in, std::string& plainName, std::string& whole);
    bool decodeValue(Cursor& in, std::string& text);
    bool decodeParameters(Cursor& in, bool isConst, std::string& name);
    bool decodeList(Cursor& in, std::string& text, int depth);
    bool decodeRepetition(Cursor& in, TypeList& types, std::string& text, int depth);
    bool decodeType(Cursor& in, const TypeList* types, Qualifiers qualifiers,
                    const std::string& declarator, std::string& text, int depth);
    bool decodeFunctionType(Cursor& in, const Qualifiers& qualifiers, const std::string& declarator,
                            std::string& text, int depth);
    bool decodeBase(Cursor& in, std::string& text);
    bool decodeInteger(Cursor& in, const char* sign, Qualifiers& qualifiers, std::string& text);
    bool className(Cursor& in, std::string& name);
    bool qualifiedName(Cursor& in, std::string& name);
    void qualify(Qualifiers& qualifiers, const char* word) const;
    bool fits(const std::string& text) const { return text.size() <= _longest; }

    const char* _begin;
    const char* _end;
    int _mode;
    size_t _longest; // characters of a text
    size_t _work;    // types decoded so far; repeats of repeats multiply
};

// A decimal count. It stops growing once it is larger than any name.
bool decimal(Cursor& in, size_t& value)
{
    if (!isDigit(in.peek())) {
        return false;
    }
    value = 0;
    const auto limit = static_cast<size_t>(in.end - in.at);
    while (isDigit(in.peek())) {
        if (value <= limit) {
            value = value * 10 + static_cast<size_t>(in.peek() - '0');
        }
        ++in.at;
    }
    return true;
}

// One digit from 1 to 9.
bool digit(Cursor& in, size_t& value)
{
    const char c = in.peek();
    if (c < '1' || c > '9') {
        return false;
    }
    value = static_cast<size_t>(c - '0');
    ++in.at;
    return true;
}

// Puts `front` before `back`, with a blank where a word meets a mark or another word.
void join(std::string& front, const std::string& back)
{
    if (!front.empty() && !back.empty() && std::isalpha(static_cast<unsigned char>(front.back()))) {
        front += ' ';
    }
    front += back;
}

const char* findDoubleUnderscore(const char* from)
{
    return std::strstr(from, "__");
}

bool Decoder::decode(std::string& name)
{
    const char* mark = findDoubleUnderscore(_begin);
    if (mark == nullptr) {
        return false;
    }
    const bool special = mark == _begin || mark[-1] == ':';
    const std::string prefix(_begin, static_cast<size_t>(mark - _begin));
    Cursor in = {mark + 2, _end};
    if (!special) {
        name = prefix;
        return decodeMember(in, Ordinary, "", name);
    }
    const bool destructor = in.peek() == 'd' && in.peek(1) == 't';
    if (destructor || (in.peek() == 'c' && in.peek(1) == 't')) {
        if (_end - in.at < 4) {
            return false;
        }
        in.at += 4;
        return in.peek() != 'F' &&
               decodeMember(in, destructor ? Destructor : Constructor, prefix, name);
    }
    if (isDigit(in.peek()) || in.peek() == 't') {
        return decodeMember(in, Constructor, prefix, name);
    }
    const char* next = findDoubleUnderscore(in.at);
    if (next == nullptr || !decodeOperator(in.at, next, name)) {
        return false;
    }
    in.at = next + 2;
    return decodeMember(in, Ordinary, prefix, name);
}

// Makes "operator +" of "pl", and "operator int" of "opi".
bool Decoder::decodeOperator(const char* code, const char* codeEnd, std::string& name)
{
    const std::string text(code, static_cast<size_t>(codeEnd - code));
    for (const Operator& row : optable) {
        if (text == row.code) {
            name = std::string("operator ") + row.text;
            return true;
        }
    }
    if (text.compare(0, 2, "op") != 0) {
        return false;
    }
    Cursor in = {code + 2, codeEnd};
    std::string type;
    if (!decodeType(in, nullptr, Qualifiers(), "", type, 0) || !in.atEnd()) {
        return false;
    }
    name = "operator " + type;
    return true;
}

// Decodes class and parameters. `name` is the member's or function's own name and becomes the whole
// one; `prefix` is what stood before a special name.
bool Decoder::decodeMember(Cursor& in, Kind kind, const std::string& prefix, std::string& name)
{
    if (in.take('F')) {
        name = prefix + name;
        return decodeParameters(in, false, name);
    }
    std::string plain;
    std::string whole;
    bool isConst = false;
    if (in.take('t')) {
        if (!decodeTemplate(in, plain, whole)) {
            return false;
        }
    } else {
        isConst = in.take('C');
        if (!className(in, plain)) {
            return false;
        }
        whole = plain;
    }
    if (kind == Constructor) {
        name = plain;
    } else if (kind == Destructor) {
        name = "~" + plain;
    }
    name = whole + "::" + name;
    in.take('F');
    return decodeParameters(in, isConst, name);
}

// "4List1Zi" gives the plain name "List" and the whole one "List<int>".
bool Decoder::decodeTemplate(Cursor& in, std::string& plainName, std::string& whole)
{
    size_t count = 0;
    if (!className(in, plainName) || !decimal(in, count)) {
        return false;
    }
    whole = plainName + "<";
    for (size_t i = 0; i < count; ++i) {
        const bool isType = in.take('Z');
        std::string argument;
        if (!decodeType(in, nullptr, Qualifiers(), "", argument, 0)) {
            return false;
        }
        // Of a value only the value is shown.
        if (!isType && !decodeValue(in, argument)) {
            return false;
        }
        whole += i > 0 ? ", " : "";
        whole += argument;
        if (!fits(whole)) {
            return false;
        }
    }
    whole += ">";
    return true;
}

bool Decoder::decodeValue(Cursor& in, std::string& text)
{
    const char* const start = in.at;
    const auto digits = [&in] {
        const char* const first = in.at;
        while (isDigit(in.peek())) {
            ++in.at;
        }
        return in.at != first;
    };
    in.take('-');
    bool good = digits();
    if (good && in.take('.')) {
        digits();
        good = in.peek() != '.';
    }
    if (good && in.take('e')) {
        in.take('-');
        good = digits();
    }
    if (!good) {
        if (!in.atEnd()) {
            std::fprintf(stderr, "Unexpected case in demangle_name: %c\n", in.peek());
        }
        return false;
    }
    text.assign(start, static_cast<size_t>(in.at - start));
    return true;
}

// The list behind the name. It must be right at every mode; only the lower one does not show it.
bool Decoder::decodeParameters(Cursor& in, bool isConst, std::string& name)
{
    std::string list;
    if (!decodeList(in, list, 0)) {
        return false;
    }
    if (_mode >= 0) {
        name += list;
        name += isConst ? " const" : "";
    }
    return fits(name);
}

// Decodes parameters up to '_', which stays, 'v', 'e' or the end.
bool Decoder::decodeList(Cursor& in, std::string& text, int depth)
{
    TypeList types;
    text = "(";
    for (;;) {
        if (in.atEnd() || in.peek() == '_' || in.take('v')) {
            break;
        }
        const bool first = types.empty();
        if (in.take('e')) {
            text += first ? "..." : ", ...";
            break;
        }
        if (in.take('N')) {
            if (!decodeRepetition(in, types, text, depth)) {
                return false;
            }
            continue;
        }
        Cursor encoded = in;
        std::string type;
        if (!decodeType(in, &types, Qualifiers(), "", type, depth)) {
            return false;
        }
        encoded.end = in.at;
        // A mere repetition stands for what it repeats.
        if (*encoded.at == 'T') {
            encoded = types[static_cast<size_t>(encoded.at[1] - '1')];
        }
        types.push_back(encoded);
        text += first ? "" : ", ";
        text += type;
        if (!fits(text)) {
            return false;
        }
    }
    text += ")";
    return true;
}

// "N32": parameter 2 three times more, each a parameter of its own.
bool Decoder::decodeRepetition(Cursor& in, TypeList& types, std::string& text, int depth)
{
    size_t count = 0;
    size_t index = 0;
    if (!digit(in, count) || !digit(in, index) || index > types.size()) {
        return false;
    }
    const Cursor encoded = types[index - 1];
    for (size_t i = 0; i < count; ++i) {
        Cursor again = encoded;
        std::string type;
        if (!decodeType(again, &types, Qualifiers(), "", type, depth)) {
            return false;
        }
        types.push_back(encoded);
        text += ", " + type;
        if (!fits(text)) {
            return false;
        }
    }
    return true;
}

void Decoder::qualify(Qualifiers& qualifiers, const char* word) const
{
    if (_mode == 1) {
        qualifiers.add(word);
    }
}

// Decodes one type. Its modifiers come first and its base last, so what they make of the
// declarator is put together from behind. `types` is the list that T refers to, or null.
bool Decoder::decodeType(Cursor& in, const TypeList* types, Qualifiers qualifiers,
                         const std::string& declarator, std::string& text, int depth)
{
    if (depth > DeepestType || ++_work > _longest) {
        return false;
    }
    std::vector<std::string> marks;
    std::string base;
    for (;;) {
        std::string mark;
        if (in.take('C')) {
            qualify(qualifiers, "const");
            continue;
        }
        if (in.take('V')) {
            qualify(qualifiers, "volatile");
            continue;
        }
        if (in.take('P')) {
            mark = "*";
        } else if (in.take('R')) {
            mark = "&";
        } else if (in.take('M')) {
            const bool good = in.take('Q') ? qualifiedName(in, mark) : className(in, mark);
            if (!good) {
                return false;
            }
            mark += "::*";
        } else {
            break;
        }
        mark += qualifiers.text;
        qualifiers.text.clear();
        marks.push_back(mark);
    }
    std::string whole;
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        join(whole, *mark);
    }
    join(whole, declarator);
    if (!fits(whole)) {
        return false;
    }
    if (in.take('F')) {
        return decodeFunctionType(in, qualifiers, whole, text, depth);
    }
    if (in.take('T')) {
        size_t index = 0;
        if (!digit(in, index) || types == nullptr || index > types->size()) {
            return false;
        }
        Cursor again = (*types)[index - 1];
        return decodeType(again, types, qualifiers, whole, text, depth + 1);
    }
    if (in.take('U')) {
        if (!decodeInteger(in, "unsigned ", qualifiers, base)) {
            return false;
        }
    } else if (in.take('S')) {
        if (!decodeInteger(in, "signed ", qualifiers, base)) {
            return false;
        }
    } else if (!decodeBase(in, base)) {
        return false;
    }
    text = qualifiers.text;
    text += text.empty() ? "" : " ";
    text += base;
    text += whole.empty() ? "" : " ";
    text += whole;
    return fits(text);
}

// Parameters, '_' and the type returned, whose declarator is this function's.
bool Decoder::decodeFunctionType(Cursor& in, const Qualifiers& qualifiers,
                                 const std::string& declarator, std::string& text, int depth)
{
    std::string list;
    if (!decodeList(in, list, depth + 1) || !in.take('_')) {
        return false;
    }
    std::string whole = declarator.empty() ? "" : "(" + declarator + ")";
    whole += list;
    whole += qualifiers.text.empty() ? "" : " " + qualifiers.text;
    return decodeType(in, nullptr, Qualifiers(), whole, text, depth + 1);
}

bool Decoder::decodeInteger(Cursor& in, const char* sign, Qualifiers& qualifiers, std::string& text)
{
    for (;;) {
        if (in.take('C')) {
            qualify(qualifiers, "const");
        } else if (in.take('V')) {
            qualify(qualifiers, "volatile");
        } else {
            break;
        }
    }
    if (in.atEnd() || std::strchr("csilx", in.peek()) == nullptr || !decodeBase(in, text)) {
        return false;
    }
    text = sign + text;
    return true;
}

bool Decoder::decodeBase(Cursor& in, std::string& text)
{
    if (in.take('Q')) {
        return qualifiedName(in, text);
    }
    if (isDigit(in.peek())) {
        return className(in, text);
    }
    switch (in.peek()) {
    case 'v':
        text = "void";
        break;
    case 'x':
        text = "long long";
        break;
    case 'l':
        text = "long";
        break;
    case 'i':
        text = "int";
        break;
    case 's':
        text = "short";
        break;
    case 'c':
        text = "char";
        break;
    case 'r':
        text = "long double";
        break;
    case 'd':
        text = "double";
        break;
    case 'f':
        text = "float";
        break;
    case 'e':
        text = "...";
        break;
    default:
        return false;
    }
    ++in.at;
    return true;
}

// A length and that many characters, as they stand.
bool Decoder::className(Cursor& in, std::string& name)
{
    size_t length = 0;
    if (!decimal(in, length) || length == 0 || length > static_cast<size_t>(in.end - in.at)) {
        return false;
    }
    name.assign(in.at, length);
    in.at += length;
    return true;
}

// A one-digit number of names, an optional '_', and the names.
bool Decoder::qualifiedName(Cursor& in, std::string& name)
{
    size_t count = 0;
    if (!digit(in, count)) {
        return false;
    }
    in.take('_');
    name.clear();
    for (size_t i = 0; i < count; ++i) {
        std::string part;
        if (!className(in, part)) {
            return false;
        }
        name += i > 0 ? "::" : "";
        name += part;
    }
    return true;
}

[[noreturn]] void outOfMemory()
{
    std::fprintf(stderr, "Unable to allocate memory.\n");
    std::exit(1);
}

} // namespace

char* demangle_name(const char* encoded, int mode)
{
    if (encoded == nullptr || encoded[0] == '\0') {
        return nullptr;
    }
    mode = mode < -1 ? -1 : mode > 1 ? 1 : mode;
    char* result = nullptr;
    try {
        std::string name;
        if (!Decoder(encoded, mode).decode(name)) {
            return nullptr;
        }
        if (mode == -1 && indicate_cplusplus != 0) {
            name += " (C++)";
        }
        result = static_cast<char*>(std::malloc(name.size() + 1));
        if (result == nullptr) {
            outOfMemory();
        }
        std::memcpy(result, name.c_str(), name.size() + 1);
    } catch (const std::bad_alloc&) {
        outOfMemory();
    }
    return result;
}
