// SPDX-License-Identifier: MIT
//
// What the names given to filters stand for, once the maps are known: those that are none there,
// and what comes near them; functions by the name that a report shows. May throw std::bad_alloc.
#pragma once

#include "qip/Support/List.h"

#include <functional>
#include <string>
#include <vector>

class ZEMFileRecord;

class FilterNames
{
public:
    // Borrows `files`.
    explicit FilterNames(const List<ZEMFileRecord*>& files);

    // Which of `names` no file, function (by its stored name), class or directory has; `kind` is
    // the letter of the filter: F, f, o, d. In their order.
    std::vector<const char*> missing(char kind, const std::vector<const char*>& names) const;

    // The stored names of the functions that a report at any level calls `name`, each once and in
    // the order of the files; they belong to these.
    std::vector<const char*> storedNames(const char* name) const;

    // The names of that kind that come nearest to `name`, functions as a report shows them without
    // parameters.
    std::vector<std::string> nearest(char kind, const char* name) const;

private:
    using Visitor = std::function<void(const char*)>;

    void visitFunctions(const Visitor& visit) const;
    void visitGroups(char kind, const Visitor& visit) const;
    void visit(char kind, const Visitor& visit) const;

    const List<ZEMFileRecord*>& _files;
};
