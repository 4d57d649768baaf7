// SPDX-License-Identifier: MIT
//
// Tells quickly which names a filter lets through. A filter is a list of the only names to show;
// an empty list shows all. Whoever fills a table makes one of these from the list as it is at that
// moment and drops it afterwards.
#pragma once

#include "qip/Support/List.h"

#include <string_view>
#include <unordered_set>

class NameFilter
{
public:
    // `names` and the texts in it are borrowed and must not change while this lives.
    explicit NameFilter(const List<char*>& names);
    NameFilter(const NameFilter&) = delete;
    NameFilter& operator=(const NameFilter&) = delete;

    // Whether the list has names and `name` is none of them. Null is the empty name.
    bool hides(const char* name) const;
    bool hides(std::string_view name) const;

    // Whether nothing is hidden.
    bool isEmpty() const;

private:
    bool isListed(std::string_view name) const;

    const List<char*>& _list;
    std::unordered_set<std::string_view> _names;
    bool _isComplete; // `_names` has all of the list; without memory it has not
};
