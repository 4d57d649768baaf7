// SPDX-License-Identifier: MIT
//
// Writes names of the standard library as its users write them.
#pragma once

#include <string>
#include <string_view>

// `text`, a name or a list of types from the compiler's decoder, without template arguments of the
// standard library that are its defaults, "std::string" for what it stands for, no "[abi:...]" and
// no blank between two '>':
//
//   std::vector<int, std::allocator<int> >   ->   std::vector<int>
std::string withStandardNames(std::string_view text);
