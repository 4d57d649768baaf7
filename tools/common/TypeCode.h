// SPDX-License-Identifier: MIT
//
// Encodes parameter types for the names that a map file stores: the other direction of
// demangle_name(). Takes the types as the compiler's own demangler spells them ("char const*").
//
// What has no code of its own, an array or a vector, is written as the name of a class, its
// characters as they stand. No code contains a ':': names are split at each "::", also inside
// template arguments.
#pragma once

#include <string>

// Appends the codes of the parameter list `types`, written without its parentheses; "v" for an
// empty one. Adds to `nChanged` how many types had to change: those with a ':' that is none of a
// pair. Returns false for what is no list of types; `code` is then of no use.
bool appendTypeCodes(const std::string& types, std::string& code, size_t& nChanged);

// Appends the codes of a list with one parameter that shows as "name (types)".
bool appendFunctionCode(const std::string& name, const std::string& types, std::string& code,
                        size_t& nChanged);

// Appends the code of the type `name`, as it stands.
bool appendNameCode(const std::string& name, std::string& code, size_t& nChanged);
