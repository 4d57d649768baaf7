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

struct NameStyle
{
    bool _isFull = false; // no template argument list is left out because a name is long
};

// The stored form of a symbol in the compiler's encoding, or of a plain name. Counts in `losses`
// where parameter types had to go or the name itself had to change. May be called from several
// threads: demangle_name() keeps nothing between calls.
std::string storedFunctionName(const std::string& symbol, ImportLosses& losses);
