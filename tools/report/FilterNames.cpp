// SPDX-License-Identifier: MIT
#include "tools/report/FilterNames.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "tools/formats/NearNames.h"
#include "tools/formats/shownName.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/NameLevel.h"
#include "zem/Rows/groupLength.h"

#include <cstring>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

FilterNames::FilterNames(const List<ZEMFileRecord*>& files) : _files(files) {}

// With each stored name, as often as it comes.
void FilterNames::visitFunctions(const Visitor& visit) const
{
    ListIterator<ZEMFileRecord*> files(_files);
    while (const ZEMFileRecord* file = files.next()) {
        ListIterator<ZEMFuncRecord*> functions(file->_funcList);
        while (const ZEMFuncRecord* function = functions.next()) {
            visit(orEmpty(function->_funcname));
        }
    }
}

// With each directory or class, each once.
void FilterNames::visitGroups(char kind, const Visitor& visit) const
{
    std::unordered_set<std::string> known;
    const auto visitGroup = [&](const char* name, long length) {
        if (length >= 0) {
            const auto added = known.emplace(name, static_cast<size_t>(length));
            if (added.second) {
                visit(added.first->c_str());
            }
        }
    };
    if (kind == 'o') {
        visitFunctions([&](const char* name) { visitGroup(name, classLength(name)); });
        return;
    }
    ListIterator<ZEMFileRecord*> files(_files);
    while (const ZEMFileRecord* file = files.next()) {
        const char* path = orEmpty(file->_filename);
        visitGroup(path, directoryLength(path));
    }
}

void FilterNames::visit(char kind, const Visitor& visit) const
{
    if (kind == 'f') {
        visitFunctions(visit);
    } else if (kind != 'F') {
        visitGroups(kind, visit);
    } else {
        ListIterator<ZEMFileRecord*> files(_files);
        while (const ZEMFileRecord* file = files.next()) {
            visit(orEmpty(file->_filename));
        }
    }
}

std::vector<const char*> FilterNames::missing(char kind,
                                              const std::vector<const char*>& names) const
{
    std::unordered_map<std::string_view, bool> isThere;
    for (const char* name : names) {
        isThere.emplace(name, false);
    }
    visit(kind, [&](const char* name) {
        const auto found = isThere.find(name);
        if (found != isThere.end()) {
            found->second = true;
        }
    });
    std::vector<const char*> result;
    for (const char* name : names) {
        if (!isThere[name]) {
            result.push_back(name);
        }
    }
    return result;
}

std::vector<const char*> FilterNames::storedNames(const char* name) const
{
    const bool hasParameters = std::strchr(name, '(') != nullptr;
    std::vector<const char*> result;
    std::unordered_set<std::string_view> known;
    visitFunctions([&](const char* stored) {
        const bool isCalled = hasParameters ? shownName(stored, ExtendedNames) == name ||
                                                  shownName(stored, ModifiedNames) == name
                                            : shownName(stored, SimpleNames) == name;
        if (isCalled && known.insert(stored).second) {
            result.push_back(stored);
        }
    });
    return result;
}

std::vector<std::string> FilterNames::nearest(char kind, const char* name) const
{
    NearNames names(name);
    visit(kind, [&](const char* known) {
        names.add(kind == 'f' ? shownName(known, SimpleNames).c_str() : known);
    });
    return names.nearest();
}
