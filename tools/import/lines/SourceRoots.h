// SPDX-License-Identifier: MIT
//
// Finds the source files that a document names by paths which count from somewhere else: from one
// of the folders that it lists, from its own folder or one above it, or from the current folder.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

class SourceRoots
{
public:
    // `document` is the path of the document.
    explicit SourceRoots(const std::string& document);

    static constexpr size_t MostFolders = 100;

    // A folder that the document lists. A relative one counts from the current folder, the
    // document's or one above it: where a name is found. Returns false when there are too many.
    [[nodiscard]] bool add(const std::string& folder);

    // The absolute path of a name in the document. Of several listed folders that have such a file
    // the first one is taken and the name is ambiguous. When none has it, places around the
    // document are tried. When there is no such file anywhere, it is taken as one in the first
    // listed folder, or in the current folder.
    const std::string& find(const std::string& name);

    // Names that more than one listed folder has, with what was taken: "a.c is in /x and /y: ...".
    const std::vector<std::string>& ambiguous() const { return _ambiguous; }

private:
    std::string search(const std::string& name);
    std::string findBelow(const std::string& folder, const std::string& name) const;

    std::vector<std::string> _folders; // listed, as written
    std::vector<std::string> _around;  // the current folder, the document's, those above it
    std::vector<std::string> _ambiguous;
    std::unordered_map<std::string, std::string> _found; // by name
};
