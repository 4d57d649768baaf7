// SPDX-License-Identifier: MIT
//
// Reads the symbols that need no decoder: names in namespaces and classes, arguments and parameters
// of the language's own types. That is a tenth of the decoder's work.
//
//   _ZN2ns1S1fEiPKc   ->   ns::S::f, int, char const*
#pragma once

#include "tools/common/FunctionText.h"

#include <string>

// Fills `function` with what readFunctionText() makes of `symbol`. Returns false, and `function` is
// anything, for a symbol that has something else in it: the decoder reads it. May be called from
// several threads.
bool readPlainSymbol(const std::string& symbol, FunctionText& function);
