// SPDX-License-Identifier: MIT
#include "zem/Demangle/Decoder.h"

#include "zem/Demangle/TypeVec.h"
#include "zem/Demangle/demangle.h"

#include <cctype>
#include <cstdio>
#include <cstring>

namespace Demangle {

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

struct BaseType
{
    char code;
    const char* text;
};

constexpr BaseType basetable[] = {
    {'v', "void"}, {'x', "long long"},   {'l', "long"},   {'i', "int"},   {'s', "short"},
    {'c', "char"}, {'r', "long double"}, {'d', "double"}, {'f', "float"}, {'e', "..."}};

constexpr size_t LongestSlack = 64 * 1024; // of a readable name, in characters
constexpr size_t LongestFactor = 64;       // times the encoded one's length
constexpr int DeepestType = 1000;          // nested function types

// Of the work, see Decoder::work(). A name as compilers make them costs a few steps for each of its
// characters.
constexpr size_t WorkSlack = 256 * 1024;
constexpr size_t WorkFactor = 32;
constexpr size_t CharactersOfAStep = 16; // copied, that is

// Every way in which a name can be malformed ends here; the callers show the encoded name.
bool error(const char*)
{
    return false;
}

// Puts `back` behind `front`, with a blank where a word meets a mark or another word.
void join(string& front, const char* back, size_t length)
{
    if (!string_empty(front) && length > 0 &&
        std::isalpha(static_cast<unsigned char>(front.p[-1]))) {
        string_append(front, " ");
    }
    string_appendn(front, back, length);
}

// The start of the last mark; a zero ends the one before.
const char* lastMark(const string& marks)
{
    const void* zero = memrchr(marks.b, '\0', string_length(marks));
    return zero == nullptr ? marks.b : static_cast<const char*>(zero) + 1;
}

bool isCode(const Cursor& code, const char* text)
{
    return code.left() == std::strlen(text) && std::memcmp(code.at, text, code.left()) == 0;
}

void takeDigits(Cursor& in)
{
    while (in.isDigit()) {
        ++in.at;
    }
}

} // namespace

void Decoder::Qualifiers::add(const char* word)
{
    for (int i = 0; i < _count; ++i) {
        if (std::strcmp(_words[i], word) == 0) {
            return;
        }
    }
    _words[_count++] = word;
}

void Decoder::Qualifiers::appendTo(string& text) const
{
    for (int i = 0; i < _count; ++i) {
        string_append(text, i == 0 ? "" : " ");
        string_append(text, _words[i]);
    }
}

Decoder::Decoder(const char* encoded, int mode)
    : _begin(encoded), _end(encoded + std::strlen(encoded)), _mode(mode),
      _longest(LongestSlack + LongestFactor * static_cast<size_t>(_end - _begin)), _work(0)
{}

size_t Decoder::mostWork() const
{
    return WorkSlack + WorkFactor * static_cast<size_t>(_end - _begin);
}

// Whether the name may go on after a text of `length` characters was made. Counts it.
bool Decoder::fits(size_t length)
{
    _work += length / CharactersOfAStep;
    return length <= _longest && _work <= mostWork();
}

bool Decoder::decode(string& name)
{
    const char* mark = std::strstr(_begin, "__");
    if (mark == nullptr) {
        return error("no encoded name");
    }
    Cursor in = {mark + 2, _end};
    if (mark == _begin || mark[-1] == ':') {
        return decodeSpecial(in, mark, name);
    }
    string_appendn(name, _begin, static_cast<size_t>(mark - _begin));
    return decodeMember(in, Ordinary, {mark, mark}, name);
}

// A constructor, destructor, operator or conversion, at the start or behind a ':'.
bool Decoder::decodeSpecial(Cursor& in, const char* mark, string& name)
{
    const Cursor prefix = {_begin, mark};
    const bool destructor = in.peek() == 'd' && in.peek(1) == 't';
    if (destructor || (in.peek() == 'c' && in.peek(1) == 't')) {
        if (in.left() < 4 || in.peek(4) == 'F') {
            return error("a constructor or destructor of no class");
        }
        in.at += 4;
        return decodeMember(in, destructor ? Destructor : Constructor, prefix, name);
    }
    if (in.isDigit() || in.peek() == 't') {
        return decodeMember(in, Constructor, prefix, name);
    }
    const char* next = std::strstr(in.at, "__");
    if (next == nullptr || !munge_function_name({in.at, next}, name)) {
        return error("an unknown operator");
    }
    in.at = next + 2;
    return decodeMember(in, Ordinary, prefix, name);
}

// Makes "operator +" of "pl", and "operator int" of "opi".
bool Decoder::munge_function_name(Cursor code, string& name)
{
    for (const Operator& row : optable) {
        if (isCode(code, row.code)) {
            string_append(name, "operator ");
            string_append(name, row.text);
            return true;
        }
    }
    if (!code.take('o') || !code.take('p')) {
        return false;
    }
    string type;
    if (!do_type(code, nullptr, Qualifiers(), string(), type, 0) || !code.atEnd()) {
        return false;
    }
    string_append(name, "operator ");
    string_appends(name, type);
    return true;
}

// Decodes class and parameters. `name` is the member's or function's own name and becomes the whole
// one; `prefix` is what stood before a special name.
bool Decoder::decodeMember(Cursor& in, Kind kind, const Cursor& prefix, string& name)
{
    if (in.take('F')) {
        string_prependn(name, prefix.at, prefix.left());
        return decodeParameters(in, false, name);
    }
    Cursor plain = in;
    string whole;
    bool isConst = false;
    if (in.take('t')) {
        if (!decodeTemplate(in, plain, whole)) {
            return false;
        }
    } else {
        isConst = in.take('C');
        if (!takeClassName(in, plain)) {
            return false;
        }
        string_appendn(whole, plain.at, plain.left());
    }
    string_append(whole, "::");
    if (kind == Ordinary) {
        string_appends(whole, name);
    } else {
        string_append(whole, kind == Destructor ? "~" : "");
        string_appendn(whole, plain.at, plain.left());
    }
    string_swap(name, whole);
    in.take('F');
    return decodeParameters(in, isConst, name);
}

// "4List1Zi" gives the plain name "List" and the whole one "List<int>".
bool Decoder::decodeTemplate(Cursor& in, Cursor& plainName, string& whole)
{
    size_t count = 0;
    if (!takeClassName(in, plainName) || !in.takeCount(count)) {
        return error("a template without a name or a number of arguments");
    }
    string_appendn(whole, plainName.at, plainName.left());
    string_append(whole, "<");
    for (size_t i = 0; i < count; ++i) {
        string_append(whole, i > 0 ? ", " : "");
        const size_t start = string_length(whole);
        const bool isType = in.take('Z');
        if (!do_type(in, nullptr, Qualifiers(), string(), whole, 0)) {
            return false;
        }
        if (!isType) {
            string_chop(whole, start); // of a value only the value is shown
            if (!decodeValue(in, whole)) {
                return false;
            }
        }
        if (string_length(whole) > _longest) {
            return error("too long");
        }
    }
    string_append(whole, ">");
    return true;
}

bool Decoder::decodeValue(Cursor& in, string& text)
{
    const char* const start = in.at;
    const auto digits = [&in] {
        const char* const first = in.at;
        takeDigits(in);
        return in.at != first;
    };
    in.take('-');
    bool good = digits();
    if (good && in.take('.')) {
        takeDigits(in);
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
        return error("no value");
    }
    string_appendn(text, start, static_cast<size_t>(in.at - start));
    return true;
}

// The list behind the name. It must be right at every mode; only the lower one does not show it.
bool Decoder::decodeParameters(Cursor& in, bool isConst, string& name)
{
    const size_t length = string_length(name);
    if (!do_args(in, name, 0)) {
        return false;
    }
    string_append(name, isConst ? " const" : "");
    if (string_length(name) > _longest) {
        return error("too long");
    }
    if (_mode == DemangleName) {
        string_chop(name, length);
    }
    return true;
}

// Appends parameters up to '_', which stays, 'v', 'e' or the end.
bool Decoder::do_args(Cursor& in, string& text, int depth)
{
    TypeVec types;
    string_append(text, "(");
    while (!in.atEnd() && in.peek() != '_' && !in.take('v')) {
        if (in.take('e')) {
            string_append(text, types.ntypes() == 0 ? "..." : ", ...");
            break;
        }
        const bool good = in.take('N') ? do_repeated_args(in, types, text, depth)
                                       : do_arg(in, types, text, depth);
        if (!good) {
            return false;
        }
    }
    string_append(text, ")");
    return true;
}

// Appends one parameter and remembers its type.
bool Decoder::do_arg(Cursor& in, TypeVec& types, string& text, int depth)
{
    Cursor encoded = in;
    string_append(text, types.ntypes() == 0 ? "" : ", ");
    if (!do_type(in, &types, Qualifiers(), string(), text, depth)) {
        return false;
    }
    encoded.end = in.at;
    // A mere repetition stands for what it repeats.
    if (*encoded.at == 'T') {
        encoded = types.type(static_cast<size_t>(encoded.at[1] - '0'));
    }
    types.remember(encoded);
    return string_length(text) <= _longest || error("too long");
}

// "N32": parameter 2 three times more, each a parameter of its own.
bool Decoder::do_repeated_args(Cursor& in, TypeVec& types, string& text, int depth)
{
    size_t count = 0;
    size_t index = 0;
    if (!in.takeDigit(count) || !in.takeDigit(index) || index > types.ntypes()) {
        return error("no such parameter");
    }
    const Cursor encoded = types.type(index);
    for (size_t i = 0; i < count; ++i) {
        Cursor again = encoded;
        if (!do_arg(again, types, text, depth)) {
            return false;
        }
    }
    return true;
}

// Takes a C or V; shown with the modifiers only.
bool Decoder::takeQualifier(Cursor& in, Qualifiers& qualifiers)
{
    const char* word = in.peek() == 'C' ? "const" : in.peek() == 'V' ? "volatile" : nullptr;
    if (word == nullptr) {
        return false;
    }
    ++in.at;
    ++_work;
    if (_mode == DemangleModifiers) {
        qualifiers.add(word);
    }
    return true;
}

// Appends one type. Its modifiers come first and its base last. `types` is the list that T refers
// to, or null.
bool Decoder::do_type(Cursor& in, const TypeVec* types, const Qualifiers& qualifiers,
                      const string& declarator, string& text, int depth)
{
    if (depth > DeepestType || ++_work > mostWork()) {
        return error("too much");
    }
    Declarator modified;
    modified.qualifiers = qualifiers;
    if (!do_modifiers(in, declarator, modified)) {
        return false;
    }
    if (in.take('F')) {
        return do_function_type(in, modified, text, depth);
    }
    if (in.take('T')) {
        return do_remembered_type(in, types, modified, text, depth);
    }
    const char* sign = in.take('U') ? "unsigned " : in.take('S') ? "signed " : nullptr;
    while (sign != nullptr && takeQualifier(in, modified.qualifiers)) {
    }
    const size_t start = string_length(text);
    modified.qualifiers.appendTo(text);
    string_append(text, modified.qualifiers.isEmpty() ? "" : " ");
    if (!(sign == nullptr ? do_base(in, text) : do_integer(in, sign, text))) {
        return false;
    }
    string_append(text, string_empty(modified.text) ? "" : " ");
    string_appends(text, modified.text);
    return fits(string_length(text) - start);
}

// Decodes P, R, M, C and V. What they make of the declarator is put together from behind: the first
// mark stands next to `inner`, what was there before.
bool Decoder::do_modifiers(Cursor& in, const string& inner, Declarator& declarator)
{
    string& marks = declarator.text; // as they come, each with a zero behind it
    for (;;) {
        if (takeQualifier(in, declarator.qualifiers)) {
            continue;
        }
        if (in.take('P')) {
            string_append(marks, "*");
        } else if (in.take('R')) {
            string_append(marks, "&");
        } else if (in.take('M')) {
            if (!(in.take('Q') ? do_qualified_name(in, marks) : do_class_name(in, marks))) {
                return false;
            }
            string_append(marks, "::*");
        } else {
            break;
        }
        ++_work;
        declarator.qualifiers.appendTo(marks);
        declarator.qualifiers = Qualifiers();
        string_appendn(marks, "", 1);
    }
    if (!string_empty(marks) || !string_empty(inner)) {
        string whole;
        string_need(whole, string_length(marks) + string_length(inner));
        while (!string_empty(marks)) {
            string_chop(marks, string_length(marks) - 1);
            const char* start = lastMark(marks);
            const auto length = static_cast<size_t>(marks.p - start);
            join(whole, start, length);
            string_chop(marks, string_length(marks) - length);
        }
        join(whole, inner.b, string_length(inner));
        string_swap(marks, whole);
    }
    return fits(string_length(declarator.text));
}

// Parameters, '_' and the type returned, whose declarator is this function's.
bool Decoder::do_function_type(Cursor& in, const Declarator& declarator, string& text, int depth)
{
    string list;
    if (!do_args(in, list, depth + 1) || !in.take('_')) {
        return error("a function type without an end");
    }
    string whole;
    if (!string_empty(declarator.text)) {
        string_append(whole, "(");
        string_appends(whole, declarator.text);
        string_append(whole, ")");
    }
    string_appends(whole, list);
    if (!declarator.qualifiers.isEmpty()) {
        string_append(whole, " ");
        declarator.qualifiers.appendTo(whole);
    }
    return do_type(in, nullptr, Qualifiers(), whole, text, depth + 1);
}

// The number of an earlier parameter, whose type stands here again.
bool Decoder::do_remembered_type(Cursor& in, const TypeVec* types, const Declarator& declarator,
                                 string& text, int depth)
{
    size_t index = 0;
    if (!in.takeDigit(index) || types == nullptr || index > types->ntypes()) {
        return error("no such parameter");
    }
    Cursor again = types->type(index);
    return do_type(again, types, declarator.qualifiers, declarator.text, text, depth + 1);
}

bool Decoder::do_integer(Cursor& in, const char* sign, string& text)
{
    if (in.atEnd() || std::strchr("csilx", in.peek()) == nullptr) {
        return error("no integer type");
    }
    string_append(text, sign);
    return do_base(in, text);
}

bool Decoder::do_base(Cursor& in, string& text)
{
    if (in.take('Q')) {
        return do_qualified_name(in, text);
    }
    if (in.isDigit()) {
        return do_class_name(in, text);
    }
    for (const BaseType& row : basetable) {
        if (in.take(row.code)) {
            string_append(text, row.text);
            return true;
        }
    }
    return error("an unknown type");
}

// A length and that many characters, as they stand.
bool Decoder::takeClassName(Cursor& in, Cursor& name)
{
    size_t length = 0;
    if (!in.takeCount(length) || length == 0 || length > in.left()) {
        return error("no class name");
    }
    name = {in.at, in.at + length};
    in.at += length;
    return true;
}

bool Decoder::do_class_name(Cursor& in, string& text)
{
    Cursor name = in;
    if (!takeClassName(in, name)) {
        return false;
    }
    string_appendn(text, name.at, name.left());
    return true;
}

// Appends names joined by "::": a number of them and the names. A one-digit number may have a '_'
// behind it; a longer one stands between two, because the first name's length follows.
bool Decoder::do_qualified_name(Cursor& in, string& name)
{
    size_t count = 0;
    const bool isLong = in.take('_');
    if (!(isLong ? in.takeCount(count) && count > 0 : in.takeDigit(count)) ||
        (!in.take('_') && isLong)) {
        return error("no number of names");
    }
    for (size_t i = 0; i < count; ++i) {
        string_append(name, i > 0 ? "::" : "");
        if (!do_class_name(in, name)) {
            return false;
        }
    }
    return true;
}

} // namespace Demangle
