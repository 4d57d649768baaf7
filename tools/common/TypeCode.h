// SPDX-License-Identifier: MIT
//
// Encodes parameter types for the names that a map file stores: the other direction of
// demangle_name(). Takes the types as the compiler's own demangler spells them ("char const*").
#pragma once

#include <string>

// Appends the codes of the parameter list `types`, written without its parentheses; "v" for an
// empty one. A class name keeps its characters: it is split at each "::", also inside template
// arguments, into at most nine parts. Returns false when a type has no code (rvalue references,
// arrays, ten parts or more); `code` is then of no use.
bool appendTypeCodes(const std::string& types, std::string& code);
