// SPDX-License-Identifier: MIT
//
// Words of commands that messages show to be typed.
#pragma once

#include <string>

// `text` as a shell reads it as one word: quoted where a character in it means something. Blanks in
// folders are common, and the command is there to be copied.
std::string shellWord(const std::string& text);
