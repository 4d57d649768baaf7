// SPDX-License-Identifier: MIT
//
// The folder that maps and logs are written into. Imports share it; who removes maps has it alone,
// so that no map goes between the moment it is there and the moment a log names it.
//
// Where an operation returns false, errno has the system's reason.
#pragma once

#include <string>

class OutputFolder
{
public:
    OutputFolder() = default;
    // Gives the folder free for others.
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    // Makes the folder and those above when they are not there, and shares it with other imports.
    // Waits while somebody removes maps there.
    bool makeShared(const std::string& folder);

    // Takes a folder that is there alone. Waits for the imports that write into it.
    bool takeAlone(const std::string& folder);

    // The folder as the system finds it: absolute, without links and "..".
    const std::string& path() const { return _path; }

    // Waits until the names in the folder are on the disk.
    bool sync();

private:
    bool open(const std::string& folder, int lock);

    std::string _path;
    int _fd = -1;
};
