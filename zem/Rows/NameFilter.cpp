// SPDX-License-Identifier: MIT
#include "zem/Rows/NameFilter.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"

#include <new>

NameFilter::NameFilter(const List<char*>& names) : _list(names), _isComplete(false)
{
    try {
        ListIterator<char*> it(names);
        while (const char* name = it.next()) {
            _names.insert(name);
        }
        _isComplete = true;
    } catch (const std::bad_alloc&) {
        _names.clear();
    }
}

bool NameFilter::hides(const char* name) const
{
    return hides(std::string_view(orEmpty(name)));
}

bool NameFilter::hides(std::string_view name) const
{
    return !isEmpty() && !(_isComplete ? _names.count(name) != 0 : isListed(name));
}

bool NameFilter::isEmpty() const
{
    return _list.length() == 0;
}

bool NameFilter::isListed(std::string_view name) const
{
    ListIterator<char*> it(_list);
    while (const char* shown = it.next()) {
        if (shown == name) {
            return true;
        }
    }
    return false;
}
