// SPDX-License-Identifier: MIT
//
// A directory of its own for one test, removed with all that is in it when the object goes.
#pragma once

#include <string>

class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return _path; }

    // The path of an entry `name` of the directory; the entry need not exist.
    std::string path(const std::string& name) const { return _path + "/" + name; }

    // Makes the file `name`, directories on the way included, with these bytes. Returns its path.
    std::string write(const std::string& name, const std::string& bytes) const;

    // The bytes of a file; empty when it cannot be read.
    static std::string read(const std::string& path);

private:
    std::string _path;
};
