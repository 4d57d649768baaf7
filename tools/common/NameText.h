// SPDX-License-Identifier: MIT
//
// The readable name of a function, "ns::List<int>::append", taken apart by its brackets. Used to
// split it, and to leave out what makes it too long or what the class report cannot bear.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class NameText
{
public:
    static constexpr size_t None = static_cast<size_t>(-1);

    // Keeps a copy. Linear in its length. Signs of operators are no brackets, and neither is a '<'
    // that nothing closes.
    explicit NameText(std::string text);

    const std::string& text() const { return _text; }
    // The bracket that belongs to the one at `at`; None when there is no bracket.
    size_t partner(size_t at) const { return _partner[at] == Alone ? None : _partner[at]; }
    // Where a bracket opens the partner, elsewhere `at`: for walks that pass over brackets.
    size_t pastBrackets(size_t at) const;

    // Where the last of the parts between "::" starts: 0 when there is one part.
    size_t lastPart() const { return _lastPart; }
    // Where the type of "operator type" starts in the last part; None when it is no conversion.
    size_t conversionType() const { return _conversionType; }
    // Whether an argument list of a template is in the text.
    bool hasArguments() const { return _deepestList > 0; }

    // At most `longest` characters where that can be done: the parameters of lambdas become
    // "(...)", then the innermost argument lists `<...>`, then those around them, and at last the
    // parameters of functions that the name is local to "(...)".
    std::string shortened(size_t longest) const;
    // `<...>` for every argument list with "__" in it, the innermost first, and "(...)" for such
    // parameters of lambdas and of functions that the name is local to, until none is left.
    std::string withoutDoubleUnderscores() const;
    // Every argument list is `<...>`.
    std::string withoutArguments() const;
    // The same, and "(...)" for the parameters of lambdas and of functions that the name is local
    // to: those differ among instances, too.
    std::string withoutDetails() const;
    // Those parameters, with their brackets, from the left.
    std::vector<std::string> details() const;
    // "(...)" for those that are not kept; `keeps` has as many as details().
    std::string withDetails(const std::vector<bool>& keeps) const;

private:
    // A place in the text, of which there are as many as characters; names are short.
    using Place = uint32_t;
    static constexpr Place Alone = static_cast<Place>(-1);

    void matchBrackets();
    void findParts();
    // Which parameters become "(...)": those of lambdas, or also those of functions that the name
    // is local to; only where that is shorter, or everywhere.
    enum Parameters { NoParameters, LongOfLambdas, LongParameters, AllParameters };

    // Of lists and parameters only those that hold `onlyWith`.
    std::string without(int depthOfLists, Parameters parameters,
                        std::string_view onlyWith = "") const;
    bool holds(size_t bracket, std::string_view word) const;
    bool isLeftOut(size_t bracket, bool isLambda, Parameters parameters) const;
    size_t lambdaParameters(size_t at) const;
    bool isDetail(size_t at) const;
    bool isLocalParameters(size_t at) const;

    std::string _text;
    std::vector<Place> _partner;
    std::vector<int> _listDepth; // of a '<': 1 when no list is inside
    int _deepestList = 0;
    size_t _lastPart = 0;
    size_t _conversionType = None;
};

// The place behind an "operator" and its sign that start at `at`, and behind the blank that keeps a
// '<' of the sign apart from an argument list; `at` itself when there is none.
size_t pastOperator(std::string_view text, size_t at);

// `text` without the namespaces and classes in front of each name, and without any other ':'. Only
// names inside of more than `depth` brackets lose them.
std::string withoutQualifiers(const std::string& text, int depth = -1);

// Whether no character of the name is a bracket and no part an operator, as of most names. Such a
// name needs no NameText.
bool isPlainName(const std::string& name);

// The same as NameText(text).withoutArguments(), but for most texts at a fraction of its cost.
std::string withoutArguments(const std::string& text);

// Appends to `result` the text with `<...>` for every argument list. Returns false, and `result` is
// anything, for a text that has brackets outside of them, operators, or brackets without a partner.
bool leavePlainListsOut(const std::string& text, std::string& result);

// How many parts the "::" of a text make.
size_t partsOf(const std::string& text);

// The parts of a list of types between its commas, without blanks around them. A parameter pack
// with nothing in it leaves nothing between its commas, which is no part.
std::vector<std::string> splitList(const std::string& types);
