// SPDX-License-Identifier: MIT
#include "tools/common/SymbolScan.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

constexpr uint64_t Boundless = uint64_t(1) << 40; // lengths do not grow past this
constexpr int DeepestNesting = 512;
constexpr uint64_t StepsPerCharacter = 64; // a symbol that is tried in more ways is not known
constexpr int MostPasses = 4;
constexpr size_t UsualParts = 64; // that a symbol has or fewer

constexpr uint64_t AutoLength = 8;       // "auto:12"
constexpr uint64_t MarkLength = 4;       // a mark with its blanks or brackets
constexpr uint64_t WordLength = 24;      // the longest word: "decltype(nullptr)", a cast's name
constexpr uint64_t QualifierLength = 20; // " transaction_safe"

// What a part is printed as. `_once` is printed for each element of a parameter pack that stands in
// the same expansion, `_pack` is that pack's whole text.
struct Length
{
    uint64_t _once = 0;
    uint64_t _pack = 0;

    uint64_t sum() const { return std::min(_once + _pack, Boundless); }
    void add(uint64_t once) { _once = std::min(_once + once, Boundless); }
    void add(const Length& other)
    {
        add(other._once);
        _pack = std::min(_pack + other._pack, Boundless);
    }
};

// The characters of one operator and how many expressions follow it.
struct OperatorCode
{
    const char* code;
    int operands;
};

// Expressions whose operands are nothing but expressions. The others have their own functions.
const OperatorCode operatorCodes[] = {
    {"aN", 2}, {"aS", 2}, {"aa", 2}, {"ad", 1}, {"an", 2}, {"aw", 1}, {"az", 1}, {"cm", 2},
    {"co", 1}, {"dV", 2}, {"da", 1}, {"de", 1}, {"dl", 1}, {"ds", 2}, {"dv", 2}, {"eO", 2},
    {"eo", 2}, {"eq", 2}, {"ge", 2}, {"gt", 2}, {"ix", 2}, {"lS", 2}, {"le", 2}, {"ls", 2},
    {"lt", 2}, {"mI", 2}, {"mL", 2}, {"mi", 2}, {"ml", 2}, {"mm", 1}, {"ne", 2}, {"ng", 1},
    {"nt", 1}, {"nx", 1}, {"oR", 2}, {"oo", 2}, {"or", 2}, {"pL", 2}, {"pl", 2}, {"pm", 2},
    {"pp", 1}, {"ps", 1}, {"qu", 3}, {"rM", 2}, {"rS", 2}, {"rm", 2}, {"rs", 2}, {"sZ", 1},
    {"sp", 1}, {"ss", 2}, {"sz", 1}, {"te", 1}, {"tr", 0}, {"tw", 1}};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

bool isOneOf(char c, std::string_view characters)
{
    for (const char one : characters) {
        if (c == one) {
            return true;
        }
    }
    return false;
}

class Scanner
{
public:
    // `parameter` is the length of a template parameter whose argument comes later.
    Scanner(const std::string& symbol, const Length& parameter)
        : _text(symbol), _later(parameter), _budget(StepsPerCharacter * (symbol.size() + 1))
    {
        _parts.reserve(std::min(symbol.size() / 4, UsualParts));
    }

    bool scan(SymbolScan& result);
    const Length& longestArgument() const { return _longestArgument; }
    // Whether a parameter stood before its argument.
    bool isLaterUsed() const { return _isLaterUsed; }
    uint64_t steps() const { return _steps; }

private:
    // What the caller must know of a name.
    struct Name
    {
        Length _length;
        bool _isTemplate = false;    // ends in template arguments
        bool _isPlainResult = false; // constructor, destructor, conversion: has no result type
    };

    bool encoding(Length& length, bool isOutermost);
    bool specialName(Length& length);
    bool callOffset();
    bool name(Name& name);
    bool nestedName(Name& name);
    bool localName(Name& name);
    bool prefix(Name& name);
    bool unqualifiedName(Name& name);
    bool operatorName(Name& name);
    bool constructorName(Name& name);
    bool unnamedName(Name& name);
    bool sourceName(Length& length);
    bool substitution(Length& length, bool& isPart);
    bool templateParameter(Length& length);
    bool templateArguments(Length& length);
    bool templateArgument(Length& length);
    bool type(Length& length);
    bool qualifiedType(Length& length);
    bool parameterType(Length& length);
    bool classType(Length& length);
    bool substitutedType(Length& length);
    bool typeOfD(Length& length);
    bool functionType(Length& length);
    bool arrayType(Length& length);
    bool typeList(Length& length);
    bool qualifiers(Length& length);
    bool expression(Length& length);
    bool operatorExpression(Length& length);
    bool scopedName(Length& length);
    bool expressionList(Length& length, char end);
    bool newExpression(Length& length);
    bool primary(Length& length);
    bool functionParameter(Length& length);
    bool unresolvedName(Length& length);
    bool foldExpression(Length& length);
    void expandPack(Length& length) const;

    char peek(size_t ahead = 0) const
    {
        return _at + ahead < _text.size() ? _text[_at + ahead] : 0;
    }
    bool atEnd() const { return _at >= _text.size(); }
    bool take(char c)
    {
        if (peek() != c || c == 0) {
            return false;
        }
        ++_at;
        return true;
    }
    bool take(const char* code)
    {
        size_t length = 0;
        for (; code[length] != 0; ++length) {
            if (peek(length) != code[length]) {
                return false;
            }
        }
        _at += length;
        return true;
    }
    void skipNumber()
    {
        (void)take('n');
        while (isDigit(peek())) {
            ++_at;
        }
    }
    bool number(size_t& value);
    bool sequence(size_t& value);
    void remember(const Length& length) { _parts.push_back(length); }

    const std::string& _text;
    const Length _later;
    const uint64_t _budget;
    size_t _at = 0;
    uint64_t _steps = 0;
    int _depth = 0;
    int _typeDepth = 0;   // in a type or an argument: template arguments are not the function's
    int _lambdaDepth = 0; // in the parameters of a lambda: template parameters are "auto:1"
    bool _isConversion = false;
    bool _isLaterUsed = false;
    std::vector<size_t> _lambdaPacks;
    std::vector<Length> _parts;     // what substitutions refer to
    std::vector<Length> _arguments; // of the template whose parameters are being read
    Length _longestArgument;
    uint64_t _longestPack = 1; // elements
    Length _lastName;          // what a constructor is called
    size_t _nameEnd = 0;
    bool _hasResult = false;
};

// Counts the nesting of one function, and the parts.
class Nesting
{
public:
    Nesting(int& depth, uint64_t& steps) : _depth(depth)
    {
        ++_depth;
        ++steps;
    }
    ~Nesting() { --_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& _depth;
};

bool Scanner::number(size_t& value)
{
    if (!isDigit(peek())) {
        return false;
    }
    value = 0;
    while (isDigit(peek())) {
        if (value <= _text.size()) {
            value = value * 10 + static_cast<size_t>(peek() - '0');
        }
        ++_at;
    }
    return true;
}

// "_" is 0, "0_" is 1: digits and capitals are base 36.
bool Scanner::sequence(size_t& value)
{
    value = 0;
    bool isFirst = true;
    for (; peek() != '_'; isFirst = false) {
        const char c = peek();
        const bool isCapital = c >= 'A' && c <= 'Z';
        if (!isDigit(c) && !isCapital) {
            return false;
        }
        if (value <= _text.size()) {
            value = value * 36 + static_cast<size_t>(isCapital ? c - 'A' + 10 : c - '0');
        }
        ++_at;
    }
    ++_at;
    value += isFirst ? 0 : 1;
    return true;
}

bool Scanner::scan(SymbolScan& result)
{
    Length length;
    if (!take("_Z") || !encoding(length, true) || !(atEnd() || peek() == '.')) {
        return false;
    }
    result._isKnown = true;
    result._hasResult = _hasResult;
    result._nameEnd = _nameEnd;
    result._lambdaPacks.swap(_lambdaPacks);
    result._length = std::min(length.sum() + (_text.size() - _at) + 10, Boundless);
    return true;
}

bool Scanner::encoding(Length& length, bool isOutermost)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget) {
        return false;
    }
    if (peek() == 'T' || peek() == 'G') {
        return specialName(length);
    }
    std::vector<Length> outer;
    if (!isOutermost) {
        outer = _arguments;
    }
    const int typeDepth = _typeDepth;
    _typeDepth = 0;
    Name function;
    if (!name(function)) {
        return false;
    }
    if (isOutermost) {
        _nameEnd = _at;
    }
    length.add(function._length);
    bool isGood = true;
    if (!atEnd() && peek() != 'E' && peek() != '.') {
        const bool hasResult = function._isTemplate && !function._isPlainResult;
        _hasResult = isOutermost ? hasResult : _hasResult;
        Length parameters;
        isGood = typeList(parameters);
        length.add(parameters);
        length.add(MarkLength);
    }
    if (!isOutermost) {
        _arguments.swap(outer);
    }
    _typeDepth = typeDepth;
    return isGood;
}

bool Scanner::callOffset()
{
    if (take('h')) {
        skipNumber();
        return take('_');
    }
    if (take('v')) {
        skipNumber();
        if (!take('_')) {
            return false;
        }
        skipNumber();
        return take('_');
    }
    return false;
}

// Virtual tables, thunks and guards: no function of the user's has such a name.
bool Scanner::specialName(Length& length)
{
    length.add(WordLength * 2);
    const char kind = peek();
    const char what = peek(1);
    _at += 2;
    if (kind == 'T' && (what == 'h' || what == 'v')) {
        --_at;
        return callOffset() && encoding(length, false);
    }
    if (kind == 'T' && what == 'c') {
        return callOffset() && callOffset() && encoding(length, false);
    }
    if (kind == 'T' && isOneOf(what, "VTIS")) {
        return type(length);
    }
    if ((kind == 'T' && (what == 'H' || what == 'W')) || (kind == 'G' && what == 'V')) {
        Name object;
        const bool isGood = name(object);
        length.add(object._length);
        return isGood;
    }
    return false;
}

bool Scanner::name(Name& name)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget) {
        return false;
    }
    if (peek() == 'N') {
        return nestedName(name);
    }
    if (peek() == 'Z') {
        return localName(name);
    }
    if (peek() == 'S' && peek(1) != 't') {
        bool isPart = false;
        if (!substitution(name._length, isPart) || peek() != 'I') {
            return false;
        }
        name._isTemplate = true;
        return templateArguments(name._length);
    }
    if (take("St")) {
        name._length.add(5);
    }
    if (!unqualifiedName(name)) {
        return false;
    }
    if (peek() == 'I') {
        remember(name._length);
        name._isTemplate = true;
        return templateArguments(name._length);
    }
    return true;
}

bool Scanner::nestedName(Name& name)
{
    return take('N') && qualifiers(name._length) && prefix(name) && take('E');
}

bool Scanner::localName(Name& name)
{
    Length function;
    if (!take('Z') || !encoding(function, false) || !take('E')) {
        return false;
    }
    name._length = function;
    name._length.add(2);
    if (take('s')) {
        name._length.add(WordLength);
    } else {
        if (take('d')) {
            skipNumber();
            if (!take('_')) {
                return false;
            }
            name._length.add(WordLength);
        }
        Name inner;
        if (!this->name(inner)) {
            return false;
        }
        name._length.add(inner._length);
        name._isTemplate = inner._isTemplate;
        name._isPlainResult = inner._isPlainResult;
    }
    if (take('_')) {
        const bool isLong = take('_');
        skipNumber();
        return !isLong || take('_');
    }
    return true;
}

bool Scanner::prefix(Name& name)
{
    for (;;) {
        const char c = peek();
        const bool isSubstitution = c == 'S' && peek(1) != 't';
        if (c == 'E') {
            return true;
        }
        ++_steps;
        if (c == 'I') {
            name._isTemplate = true;
            if (!templateArguments(name._length)) {
                return false;
            }
        } else if (c == 'M') {
            ++_at; // a lambda in the initialiser of the member just named
            continue;
        } else {
            name._isTemplate = false;
            bool isGood = true;
            if (isSubstitution) {
                bool isPart = false;
                isGood = substitution(name._length, isPart);
            } else if (c == 'T') {
                isGood = templateParameter(name._length);
            } else if (c == 'D' && (peek(1) == 't' || peek(1) == 'T')) {
                isGood = typeOfD(name._length);
            } else if (take("St")) {
                name._length.add(3);
                continue;
            } else {
                name._length.add(2);
                isGood = unqualifiedName(name);
            }
            if (!isGood) {
                return false;
            }
        }
        if (!isSubstitution && peek() != 'E') {
            remember(name._length);
        }
    }
}

bool Scanner::unqualifiedName(Name& name)
{
    const char c = peek();
    name._isPlainResult = false;
    bool isGood = false;
    if (isDigit(c) || c == 'L') {
        (void)take('L');
        isGood = sourceName(name._length);
    } else if (isLower(c)) {
        isGood = operatorName(name);
    } else if (c == 'C' || (c == 'D' && peek(1) != 'C')) {
        isGood = constructorName(name);
    } else if (c == 'D') {
        _at += 2;
        isGood = true;
        while (isGood && !take('E')) {
            name._length.add(2);
            isGood = sourceName(name._length);
        }
    } else if (c == 'U') {
        isGood = unnamedName(name);
    }
    while (isGood && take('B')) {
        name._length.add(8);
        const Length kept = _lastName;
        isGood = sourceName(name._length);
        _lastName = kept;
    }
    return isGood;
}

bool Scanner::operatorName(Name& name)
{
    name._length.add(WordLength);
    if (take("cv")) {
        name._isPlainResult = true;
        const bool outer = _isConversion;
        _isConversion = true;
        const bool isGood = type(name._length);
        _isConversion = outer;
        return isGood;
    }
    if (take("li")) {
        return sourceName(name._length);
    }
    if (peek() == 'v' && isDigit(peek(1))) {
        _at += 2;
        return sourceName(name._length);
    }
    if (!isOneOf(peek(), "abcdegilmnopqrs") || peek(1) == 0) {
        return false;
    }
    _at += 2;
    return true;
}

bool Scanner::constructorName(Name& name)
{
    name._isPlainResult = true;
    name._length.add(_lastName);
    name._length.add(3);
    const bool isConstructor = peek() == 'C';
    ++_at;
    const bool isInherited = isConstructor && take('I');
    if (peek() < '0' || peek() > '5') {
        return false;
    }
    ++_at;
    Length base;
    return !isInherited || type(base);
}

// A lambda or a type without a name.
bool Scanner::unnamedName(Name& name)
{
    name._length.add(WordLength);
    if (take("Ul")) {
        ++_lambdaDepth;
        const bool isGood = typeList(name._length);
        --_lambdaDepth;
        if (!isGood || !take('E')) {
            return false;
        }
    } else if (!take("Ut")) {
        return false;
    }
    skipNumber();
    if (!take('_')) {
        return false;
    }
    remember(name._length);
    return true;
}

bool Scanner::sourceName(Length& length)
{
    size_t count = 0;
    ++_steps;
    if (!number(count) || count == 0 || count > _text.size() - _at) {
        return false;
    }
    // "_GLOBAL__N_1" is printed as "(anonymous namespace)".
    _lastName._once = std::max<uint64_t>(count, WordLength);
    _lastName._pack = 0;
    length.add(_lastName);
    _at += count;
    return true;
}

// `isPart` says whether an earlier part is meant, and not an abbreviation.
bool Scanner::substitution(Length& length, bool& isPart)
{
    ++_steps;
    if (!take('S')) {
        return false;
    }
    isPart = peek() == '_' || isDigit(peek()) || (peek() >= 'A' && peek() <= 'Z');
    if (isPart) {
        size_t index = 0;
        if (!sequence(index) || index >= _parts.size()) {
            return false;
        }
        length.add(_parts[index]);
        return true;
    }
    const char c = peek();
    if (!isOneOf(c, "absiod")) {
        return false;
    }
    ++_at;
    constexpr uint64_t longestAbbreviated = 72; // std::basic_string with its arguments
    length.add(longestAbbreviated);
    _lastName._once = WordLength;
    return true;
}

bool Scanner::templateParameter(Length& length)
{
    ++_steps;
    size_t index = 0;
    if (!take('T') || !sequence(index)) {
        return false;
    }
    if (_lambdaDepth > 0) {
        length.add(AutoLength);
    }
    if (index < _arguments.size()) {
        length.add(_arguments[index]);
    } else if (_lambdaDepth == 0) {
        length.add(_later);
        _isLaterUsed = true;
    }
    return true;
}

bool Scanner::templateArguments(Length& length)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget || !(take('I') || take('J'))) {
        return false;
    }
    const Length kept = _lastName;
    const bool isConversion = _isConversion;
    _isConversion = false;
    std::vector<Length> arguments; // only of the function's own list, which others refer to
    length.add(MarkLength);
    ++_typeDepth;
    while (!take('E')) {
        Length argument;
        if (!templateArgument(argument)) {
            return false;
        }
        argument.add(2);
        length.add(argument.sum());
        if (argument.sum() > _longestArgument.sum()) {
            _longestArgument = argument;
        }
        if (_typeDepth == 1) {
            arguments.push_back(argument);
        }
    }
    --_typeDepth;
    if (_typeDepth == 0) {
        _arguments.swap(arguments);
    }
    _lastName = kept;
    _isConversion = isConversion;
    return true;
}

bool Scanner::templateArgument(Length& length)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget) {
        return false;
    }
    if (take('X')) {
        return expression(length) && take('E');
    }
    if (peek() == 'L') {
        return primary(length);
    }
    if (!take('I') && !take('J')) {
        return type(length);
    }
    uint64_t count = 0;
    while (!take('E')) {
        Length element;
        if (!templateArgument(element)) {
            return false;
        }
        length._pack = std::min(length._pack + element.sum() + 2, Boundless);
        ++count;
    }
    _longestPack = std::max(_longestPack, count);
    return true;
}

bool Scanner::type(Length& length)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget) {
        return false;
    }
    const char c = peek();
    // A type is read as a whole of its own before it is added: substitutions refer to it alone.
    Length whole;
    bool isGood = true;
    ++_typeDepth;
    if (isOneOf(c, "rVK")) {
        isGood = qualifiedType(whole);
    } else if (c == 'D' && isOneOf(peek(1), "xoOw")) {
        isGood = qualifiedType(whole);
    } else if (c == 'u') {
        ++_at;
        isGood = sourceName(whole);
        if (isGood && peek() == 'I') {
            isGood = templateArguments(whole);
        }
        if (isGood) {
            remember(whole);
        }
    } else if (isLower(c)) {
        ++_at;
        whole.add(WordLength);
    } else if (c == 'F') {
        isGood = functionType(whole);
        remember(whole);
    } else if (c == 'A') {
        isGood = arrayType(whole);
        remember(whole);
    } else if (c == 'M') {
        ++_at;
        isGood = type(whole) && type(whole);
        whole.add(MarkLength * 2);
        remember(whole);
    } else if (c == 'T') {
        isGood = parameterType(whole);
    } else if (c == 'S') {
        isGood = substitutedType(whole);
    } else if (isOneOf(c, "OPRCG")) {
        ++_at;
        isGood = type(whole);
        whole.add(c == 'C' || c == 'G' ? QualifierLength : MarkLength);
        remember(whole);
    } else if (c == 'U') {
        ++_at;
        isGood = sourceName(whole);
        if (isGood && peek() == 'I') {
            isGood = templateArguments(whole);
        }
        isGood = isGood && type(whole);
        whole.add(MarkLength);
        remember(whole);
    } else if (c == 'D') {
        isGood = typeOfD(whole);
    } else {
        isGood = classType(whole);
    }
    --_typeDepth;
    length.add(whole);
    return isGood;
}

bool Scanner::classType(Length& length)
{
    const char c = peek();
    if (c != 'N' && c != 'Z' && !isDigit(c)) {
        return false;
    }
    Name klass;
    const bool isGood = name(klass);
    length.add(klass._length);
    remember(length);
    return isGood;
}

bool Scanner::substitutedType(Length& length)
{
    bool isPart = false;
    bool isGood = true;
    if (peek(1) == 't') {
        Name klass;
        isGood = name(klass);
        length.add(klass._length);
        remember(length);
    } else {
        isGood = substitution(length, isPart);
        if (isGood && peek() == 'I') {
            isGood = templateArguments(length);
            remember(length);
        }
    }
    return isGood;
}

// A template parameter. Arguments behind it belong to it, or, in a conversion operator, to the
// operator unless others follow.
bool Scanner::parameterType(Length& length)
{
    if (!templateParameter(length)) {
        return false;
    }
    remember(length);
    if (peek() != 'I') {
        return true;
    }
    const size_t at = _at;
    const size_t nParts = _parts.size();
    const Length bare = length;
    const bool isConversion = _isConversion;
    if (!templateArguments(length)) {
        return false;
    }
    if (isConversion && peek() != 'I') {
        _at = at;
        _parts.resize(nParts);
        length = bare;
        return true;
    }
    remember(length);
    return true;
}

bool Scanner::typeOfD(Length& length)
{
    const char c = peek(1);
    _at += 2;
    if (c == 't' || c == 'T') {
        length.add(WordLength);
        const bool isGood = expression(length) && take('E');
        remember(length);
        return isGood;
    }
    if (c == 'p') {
        if (_lambdaDepth > 0) {
            _lambdaPacks.push_back(_at - 2);
        }
        const bool isGood = type(length);
        expandPack(length);
        remember(length);
        return isGood;
    }
    if (c == 'v') {
        length.add(WordLength);
        if (take('_')) {
            if (!expression(length)) {
                return false;
            }
        } else {
            skipNumber();
        }
        const bool isGood = take('_') && type(length);
        remember(length);
        return isGood;
    }
    length.add(WordLength);
    if (c == 'F') {
        skipNumber();
        return take('_') || take('x') || take('b');
    }
    return isOneOf(c, "defhisunac");
}

bool Scanner::qualifiers(Length& length)
{
    for (;;) {
        const char c = peek();
        if (isOneOf(c, "rVKRO")) {
            ++_at;
        } else if (take("Do") || take("Dx")) {
        } else if (take("DO")) {
            if (!expression(length) || !take('E')) {
                return false;
            }
        } else if (take("Dw")) {
            if (!typeList(length) || !take('E')) {
                return false;
            }
        } else {
            return true;
        }
        length.add(QualifierLength);
    }
}

bool Scanner::qualifiedType(Length& length)
{
    for (;;) {
        const char c = peek();
        const bool isWord = isOneOf(c, "rVK");
        const bool isException = c == 'D' && isOneOf(peek(1), "xoOw");
        if (isWord) {
            ++_at;
            length.add(QualifierLength);
        } else if (isException) {
            if (!qualifiers(length)) {
                return false;
            }
        } else {
            break;
        }
    }
    const bool isGood = peek() == 'F' ? functionType(length) : type(length);
    remember(length);
    return isGood;
}

bool Scanner::functionType(Length& length)
{
    if (!take('F')) {
        return false;
    }
    (void)take('Y');
    length.add(MarkLength * 2);
    if (!typeList(length)) {
        return false;
    }
    if ((peek() == 'R' || peek() == 'O') && peek(1) == 'E') {
        ++_at;
        length.add(MarkLength);
    }
    return take('E');
}

bool Scanner::arrayType(Length& length)
{
    ++_at;
    length.add(MarkLength * 2);
    if (isDigit(peek())) {
        const size_t start = _at;
        skipNumber();
        length.add(_at - start);
    } else if (peek() != '_' && !expression(length)) {
        return false;
    }
    return take('_') && type(length);
}

bool Scanner::typeList(Length& length)
{
    (void)take('J');
    while (!atEnd() && peek() != 'E' && peek() != '.') {
        if ((peek() == 'R' || peek() == 'O') && peek(1) == 'E') {
            return true;
        }
        if (!type(length)) {
            return false;
        }
        length.add(2);
    }
    return true;
}

// Of an expansion the pack's own text stands once, all else once for each element.
void Scanner::expandPack(Length& length) const
{
    const uint64_t times = length._pack > 0 ? _longestPack : 1;
    length._once = std::min(length._once, Boundless) * std::min(times, uint64_t(1) << 20);
    // "(...)..." where what is expanded is an expansion itself.
    length._once = std::min(length._once + length._pack + MarkLength * 2, Boundless);
    length._pack = 0;
}

bool Scanner::expression(Length& length)
{
    const Nesting nesting(_depth, _steps);
    if (_depth > DeepestNesting || _steps > _budget) {
        return false;
    }
    length.add(MarkLength * 2);
    const char c = peek();
    if (c == 'L') {
        return primary(length);
    }
    if (c == 'T') {
        return templateParameter(length);
    }
    if (isDigit(c)) {
        return unresolvedName(length);
    }
    if (take("on")) {
        return unresolvedName(length);
    }
    if (c == 'f' && (peek(1) == 'p' || (peek(1) == 'L' && isDigit(peek(2))))) {
        return functionParameter(length);
    }
    if (c == 'f' && isOneOf(peek(1), "lrLR")) {
        return foldExpression(length);
    }
    return operatorExpression(length);
}

bool Scanner::operatorExpression(Length& length)
{
    length.add(WordLength);
    (void)take("gs");
    if (take("sr")) {
        return scopedName(length);
    }
    if (take("cl")) {
        return expression(length) && expressionList(length, 'E');
    }
    if (take("cv")) {
        return type(length) && (take('_') ? expressionList(length, 'E') : expression(length));
    }
    if (take("tl")) {
        return type(length) && expressionList(length, 'E');
    }
    if (take("il")) {
        return expressionList(length, 'E');
    }
    if (take("nw") || take("na")) {
        return newExpression(length);
    }
    if (take("dc") || take("sc") || take("cc") || take("rc")) {
        return type(length) && expression(length);
    }
    if (take("st") || take("at") || take("ti")) {
        return type(length);
    }
    if (take("dt") || take("pt")) {
        if (!expression(length)) {
            return false;
        }
        (void)take("gs");
        return peek() == 's' && peek(1) == 'r' ? expression(length) : unresolvedName(length);
    }
    if (take("sP")) {
        while (!take('E')) {
            if (!templateArgument(length)) {
                return false;
            }
        }
        return true;
    }
    for (const OperatorCode& row : operatorCodes) {
        if (!take(row.code)) {
            continue;
        }
        if (std::strcmp(row.code, "pp") == 0 || std::strcmp(row.code, "mm") == 0) {
            (void)take('_');
        }
        for (int i = 0; i < row.operands; ++i) {
            if (!expression(length)) {
                return false;
            }
        }
        if (std::strcmp(row.code, "sp") == 0) {
            expandPack(length);
        }
        return true;
    }
    return false;
}

// A type and a name in it; or names one in another, an 'E' behind those that are not the last.
bool Scanner::scopedName(Length& length)
{
    if (!type(length)) {
        return false;
    }
    const size_t at = _at;
    if (!take('E') && !unresolvedName(length)) {
        return false;
    }
    while (isDigit(peek())) {
        if (!unresolvedName(length)) {
            return false;
        }
    }
    // This 'E' closes the scopes only where another name follows.
    if (_text[at] != 'E' && peek() == 'E' && isDigit(peek(1))) {
        ++_at;
        return unresolvedName(length);
    }
    return true;
}

bool Scanner::expressionList(Length& length, char end)
{
    while (!take(end)) {
        if (!expression(length)) {
            return false;
        }
        length.add(2);
    }
    return true;
}

bool Scanner::newExpression(Length& length)
{
    if (!expressionList(length, '_') || !type(length)) {
        return false;
    }
    return take('E') || ((take("pi") || take("il")) && expressionList(length, 'E'));
}

// "(...op x)" with one operand that is a pack, or two.
bool Scanner::foldExpression(Length& length)
{
    const bool isBinary = peek(1) == 'L' || peek(1) == 'R';
    _at += 4;
    length.add(MarkLength * 4);
    return _at <= _text.size() && expression(length) && (!isBinary || expression(length));
}

// A literal: its type and its digits, or the name of a function or object.
bool Scanner::primary(Length& length)
{
    if (!take('L')) {
        return false;
    }
    if (peek() == '_' || peek() == 'Z') {
        (void)take('_');
        return take('Z') && encoding(length, false) && take('E');
    }
    if (!type(length)) {
        return false;
    }
    const size_t start = _at;
    while (!atEnd() && peek() != 'E') {
        ++_at;
    }
    length.add(_at - start + MarkLength);
    return take('E');
}

bool Scanner::functionParameter(Length& length)
{
    length.add(WordLength);
    if (take("fL")) {
        skipNumber();
        if (!take('p')) {
            return false;
        }
    } else if (!take("fp")) {
        return false;
    }
    if (take('T')) {
        return true;
    }
    while (isOneOf(peek(), "rVK")) {
        ++_at;
    }
    skipNumber();
    return take('_');
}

bool Scanner::unresolvedName(Length& length)
{
    Name member;
    (void)take("on");
    const Length kept = _lastName;
    bool isGood = unqualifiedName(member);
    if (isGood && peek() == 'I') {
        isGood = templateArguments(member._length);
    }
    _lastName = kept;
    length.add(member._length);
    length.add(2);
    return isGood;
}

// For what is not understood: each 'S' or 'T' that may be a reference doubles the text.
uint64_t greatestLength(const std::string& symbol)
{
    uint64_t length = symbol.size() * WordLength;
    for (size_t i = 0; i + 1 < symbol.size() && length < Boundless; ++i) {
        const char next = symbol[i + 1];
        if ((symbol[i] == 'S' || symbol[i] == 'T') &&
            (next == '_' || isDigit(next) || (next >= 'A' && next <= 'Z'))) {
            length *= 2;
        }
    }
    return length;
}

} // namespace

SymbolScan scanSymbol(const std::string& symbol)
{
    SymbolScan result;
    Length argument;
    // Parameters may stand before their arguments, in conversion operators and in the arguments
    // themselves. They are taken as long as the longest argument of the pass before.
    for (int pass = 0; pass < MostPasses; ++pass) {
        Scanner scanner(symbol, argument);
        SymbolScan found;
        const bool isKnown = scanner.scan(found);
        found._steps = result._steps + scanner.steps();
        result = found;
        if (!isKnown) {
            result._length = greatestLength(symbol);
            return result;
        }
        if (!scanner.isLaterUsed() || scanner.longestArgument().sum() <= argument.sum()) {
            return result;
        }
        argument = scanner.longestArgument();
    }
    result._length = greatestLength(symbol);
    return result;
}
