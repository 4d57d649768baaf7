// SPDX-License-Identifier: MIT
#include "zem/Rows/RptInfo.h"

#include <cstring>
#include <new>

RptInfo::RptInfo()
    : _sortKeys(nullptr), _type(RptByFile), _showHitCounts(0), _markUncovered(1),
      _showPercentage(0), _showLineNumbers(1)
{}

RptInfo::~RptInfo()
{
    delete[] _sortKeys;
}

RptInfo::RptInfo(const RptInfo& other) : _sortKeys(nullptr)
{
    copyFlags(other);
    sortKeys(other._sortKeys);
}

RptInfo& RptInfo::operator=(const RptInfo& other)
{
    if (this != &other) {
        copyFlags(other);
        sortKeys(other._sortKeys);
    }
    return *this;
}

void RptInfo::sortKeys(const char* keys)
{
    if (keys == nullptr || *keys == '\0') {
        return;
    }
    const size_t size = strlen(keys) + 1;
    char* copy = new (std::nothrow) char[size];
    if (copy != nullptr) {
        memcpy(copy, keys, size);
    }
    // Only now: `keys` may be the very string that is freed.
    delete[] _sortKeys;
    _sortKeys = copy;
}

void RptInfo::copyFlags(const RptInfo& other)
{
    _type = other._type;
    _showHitCounts = other._showHitCounts;
    _markUncovered = other._markUncovered;
    _showPercentage = other._showPercentage;
    _showLineNumbers = other._showLineNumbers;
}
