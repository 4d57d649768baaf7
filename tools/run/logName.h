// SPDX-License-Identifier: MIT
//
// Names of logs, made from what a command or a test is called.
#pragma once

#include <string>

// The part of `path` behind its last slash.
std::string baseName(const std::string& path);

// `text` as the name of a file: letters, digits, the characters . _ + = , @ - and all above ASCII
// stay, anything else becomes an underscore, so that nothing in it means something to a shell. It
// begins neither with a point nor with a hyphen and has 100 bytes at most, cut between characters.
// "unnamed" for an empty text.
std::string logName(const std::string& text);

// The same for the command of a test: the base names of its words, joined by hyphens; the name
// itself when a word --test-name gives one, as the driver of Automake's tests is told.
// `words` ends with null.
std::string testName(char* const* words);
