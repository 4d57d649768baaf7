// SPDX-License-Identifier: MIT
//
// What the viewer is expected to show for a function that c++filt knows, made from c++filt's text
// alone. The forms differ from that text by these rules and no others:
//
// - no result type, no "[abi:...]", no "[clone ...]", no const, volatile, & or && behind the
//   parameters;
// - std::string for the long form of it; allocators, traits and the like left out where they are
//   the standard library's defaults;
// - no namespaces inside the last part, unless it is a conversion operator;
// - blanks and the side on which const stands do not count;
// - const and volatile of parameters show at the last level only;
// - a parameter pack with nothing in it is no parameter.
#pragma once

#include <string>

struct PlainName
{
    std::string _name;      // without parameters
    std::string _shortName; // the same without namespaces in a conversion operator's type
    std::string _wholeName; // the same with all namespaces
    std::string _params;    // "(...)" ; empty for a name without them

    // Of what c++filt prints for a function's symbol.
    static PlainName of(const std::string& filtered);
};

// Whether a map can hold parameters for the function `name`: they start at the first "__" of what
// is stored. One inside of brackets does not count; what they hold can be left out.
bool canShowTypes(const std::string& name);

// `text` in the spelling in which names are compared.
std::string comparedSpelling(const std::string& text);
// The same without any const and volatile.
std::string withoutQualifiers(const std::string& text);

// What else than its own text a name may have.
enum class Placeholders {
    None,
    OfLongName, // "<...>" for a template argument list, "lambda(...)" for a lambda's parameters
    OfInstances // also "auto" for a type, "(...)" for parameters, "..." for further ones
};

// Whether `shown` is `expected`, both in the compared spelling.
bool isShown(const std::string& expected, const std::string& shown, Placeholders placeholders);

// Whether `shown` is a name that is too wide for the report, with "..." for parts and ends of
// words, perhaps with a number behind that tells it from another name with the same form.
bool isShownCut(const std::string& expected, const std::string& shown);

// Whether `shown` is the form with parameters of a long name: the name with placeholders, and the
// whole text in the place of the parameters; that has `placeholders`, too.
bool isShownShortened(const std::string& name, const std::string& whole, const std::string& shown,
                      Placeholders placeholders);
