// SPDX-License-Identifier: MIT
//
// Remembers the current folder and the shell's name for it, and goes back there when the object
// goes: a test that changes them leaves them to the next one as they were.
#pragma once

#include <string>

class KeptFolder
{
public:
    KeptFolder();
    ~KeptFolder();
    KeptFolder(const KeptFolder&) = delete;
    KeptFolder& operator=(const KeptFolder&) = delete;

private:
    std::string _path;
    std::string _shellName; // empty when it has none
};
