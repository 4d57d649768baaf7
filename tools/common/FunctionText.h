// SPDX-License-Identifier: MIT
//
// What a symbol says of its function, as the compiler's decoder shows it and people write it: see
// StandardNames.h. Decoding is most of the work of making a name, so an importer that needs the
// text before the function has its name keeps it in CovFunction::_texts.
#pragma once

#include <string>

struct FunctionText
{
    std::string _name;        // "ns::f<int>"; the symbol itself where _isSymbol
    std::string _types;       // of the parameters, without their brackets
    bool _hasTypes = false;   // false for a name alone, that of a variable or a C function
    bool _isSymbol = false;   // no C++ name, or one that is not unfolded: shown as it is
    bool _isTooLarge = false; // the text would be too long to be made
    std::string _template;    // of templateName(), once it was asked for
};

// `symbol` is the compiler's, or a readable name that another tool made of one: "ns::f(int) const".
// May be called from several threads.
FunctionText readFunctionText(const std::string& symbol);
