// SPDX-License-Identifier: MIT
//
// A folder of inputs that lacks some: every importer has to tell of them in the same way.
#pragma once

#include "tests/support/TempDir.h"

#include <filesystem>
#include <string>

// Writes `good`, "FOLDER/NAME", with this content, and beside it a link `lost`, which leads
// nowhere, the lock of an editor, and a link to a folder outside.
inline void addLinks(const TempDir& dir, const std::string& good, const std::string& lost,
                     const std::string& content = "")
{
    const std::string folder = good.substr(0, good.find('/'));
    const std::string file = good.substr(good.find('/') + 1);
    dir.write(good, content);
    std::filesystem::create_directory(dir.path("outside"));
    std::filesystem::create_symlink("gone", dir.path(lost));
    std::filesystem::create_symlink("somebody@here.1", dir.path(folder + "/.#" + file));
    std::filesystem::create_symlink("../outside", dir.path(folder + "/more"));
}

// What has to be said of the folder.
inline std::string problemsOfLinks(const TempDir& dir, const std::string& folder,
                                   const std::string& lost)
{
    return "zem-import: cannot look at " + dir.path(lost) +
           ": it is a link to gone, which is not there\nzem-import: " + dir.path(folder + "/more") +
           " is a link to a folder, which was not looked through: if it holds something for this "
           "import, name it, too\n";
}
