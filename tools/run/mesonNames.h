// SPDX-License-Identifier: MIT
//
// What a Meson project calls its tests. Meson does not tell a wrapper the name of the test that it
// runs, only its command, so the names are asked for before and looked up by the command.
#pragma once

#include <string>

// Turns what "meson introspect --tests" prints,
//
//   [{"name": text, "cmd": [text, ...], ...}, ...]
//
// into a table for mesonName(): for each test its name, then the words of its command, each with a
// zero byte behind it, and at the end one more zero byte. Empty when the text is something else;
// tests with an empty word in their command are left out.
std::string mesonNames(const std::string& json);

// The name of the test with this command, which ends with null; empty when the table has none.
std::string mesonName(const std::string& table, char* const* words);
