// SPDX-License-Identifier: MIT
//
// A folder of its own for what another program reads and writes, below that for temporary files
// (TMPDIR, else /tmp). It goes with the object, or with a signal that ends the program.
#pragma once

#include <string>

class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Empty where the system refused to make one; problem() says why.
    const std::string& path() const { return _path; }
    const std::string& problem() const { return _problem; }

    // Puts a symbolic link `name` into it. Returns false where that is refused.
    bool link(const std::string& target, const std::string& name) const;

private:
    std::string _path;
    std::string _problem;
};
