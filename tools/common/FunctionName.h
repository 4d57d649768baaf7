// SPDX-License-Identifier: MIT
//
// Makes the name under which a map stores a function. The function report shows it through
// demangle_name(); the class report takes the text before the last ':' of the stored name. So the
// stored name is the qualified name, followed by the encoded parameter types:
//
//   _ZN3Foo3barEPKc   ->   Foo::bar__FPCc   shown as "Foo::bar", or "Foo::bar(const char *)"
//
// docs/names.md says how the names differ from the compiler's own, and why.
//
// All functions here may be called from several threads.
#pragma once

#include "tools/common/FunctionText.h"
#include "tools/common/ImportLosses.h"
#include "tools/common/ShortLabels.h"

#include <string>
#include <vector>

struct NameStyle
{
    bool _isFull = false; // no template argument list is left out because a name is long
    // Shorter forms of long names, borrowed; null while they are not known.
    const ShortLabels* _shortLabels = nullptr;
};

// The stored form of the function that all of `symbols` are: instances of one template, variants of
// one constructor, or one symbol alone. REQUIRES: `symbols` is sorted, without doubles, not empty.
// Names that differ give the template's, `<...>` for each argument list. Counts in `losses` where
// parameter types had to go, a name had to change, or a symbol was too large to unfold.
std::string storedFunctionName(const std::vector<std::string>& symbols, const NameStyle& style,
                               ImportLosses& losses);

// What the instances of one function have in common; they stand in the order of their symbols.
// Takes the texts. Counts symbols that are too large in `losses`.
FunctionText unitedText(std::vector<FunctionText>& instances, ImportLosses& losses);

// The stored form of a function of one text.
std::string storedNameOf(const FunctionText& function, const NameStyle& style,
                         ImportLosses& losses);

// The same for one symbol, in the style of a report.
std::string storedFunctionName(const std::string& symbol, ImportLosses& losses);

// What all instances of one template have in common, for telling which functions of one place are
// one: "ns::f<...>" for _ZN2ns1fIiEEvT_. The name without parameters of a function that is no
// instance; the symbol itself when it is no C++ name or too large to unfold.
std::string templateName(const std::string& symbol);
// The same of a symbol that readFunctionText() has read; `text` keeps it.
const std::string& templateName(FunctionText& text);
