// SPDX-License-Identifier: MIT
//
// Makes the name under which a map stores a function. The function report shows it through
// demangle_name(); the class report takes the text before the last ':' of the stored name. So the
// stored name is the qualified name, followed by the encoded parameter types:
//
//   _ZN3Foo3barEPKc   ->   Foo::bar__FPCc   shown as "Foo::bar", or "Foo::bar(const char *)"
//
// Each name is decoded again at all three levels. Where that does not give it back (a "__" in the
// name itself, a type without a code) the qualified name is stored alone.
#pragma once

#include "tools/common/ImportLosses.h"

#include <string>
#include <vector>

struct NameStyle
{
    bool _isFull = false; // long names are not shortened
};

// The stored form for the function at one place; `symbols` are all its instances (one or more),
// sorted, each once.
std::string storedFunctionName(const std::vector<std::string>& symbols, const NameStyle& style,
                               ImportLosses& losses);

// What all instances of a template, and the variants of a constructor or destructor, have in
// common; a plain function's name.
std::string templateName(const std::string& symbol);

// The stored form of a symbol in the compiler's encoding, or of a plain name. Counts in `losses`
// where parameter types had to go or the name itself had to change. May be called from several
// threads: demangle_name() keeps nothing between calls.
std::string storedFunctionName(const std::string& symbol, ImportLosses& losses);
