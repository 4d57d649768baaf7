// SPDX-License-Identifier: MIT
//
// What the viewer is expected to show for a function that c++filt knows, made from c++filt's text
// alone. The forms differ from that text by these rules and no others:
//
// - no result type, no "[abi:...]", no "[clone ...]", no const, volatile, & or && behind the
//   parameters;
// - std::string for the long form of it; allocators, traits and the like left out where they are
//   the standard library's defaults;
// - no namespaces inside the last part's template arguments;
// - blanks and the side on which const stands do not count;
// - const and volatile of parameters show at the last level only.
#pragma once

#include <string>

struct PlainName
{
    std::string _name;   // without parameters
    std::string _params; // "(...)" ; empty for a name without them

    // Of what c++filt prints for a function's symbol.
    static PlainName of(const std::string& filtered);
};

// `text` in the spelling in which names are compared.
std::string comparedSpelling(const std::string& text);
// The same without any const and volatile.
std::string withoutQualifiers(const std::string& text);

// Whether `shown` is `expected`, both in the compared spelling. "<...>" in `shown` stands for any
// template argument list, "(...)" behind "lambda" for any parameters.
bool isShown(const std::string& expected, const std::string& shown);
