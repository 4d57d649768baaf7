// SPDX-License-Identifier: MIT
//
// The folder that an import writes its maps and logs to.
#pragma once

#include <map>
#include <string>

class LogFolder
{
public:
    // File name > bytes.
    using Contents = std::map<std::string, std::string>;

    // The folder need not be there yet.
    explicit LogFolder(const std::string& path) : _path(path) {}

    const std::string& path() const { return _path; }
    std::string path(const std::string& name) const { return _path + "/" + name; }

    // REQUIRES: the folder is there.
    Contents contents() const;

    // Makes the folder hold these files and no others.
    void fill(const Contents& files) const;

    // Expects of each map that its name has the digest of its bytes: it is whole.
    static void expectWholeMaps(const Contents& files);

private:
    std::string _path;
};
