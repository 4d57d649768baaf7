// SPDX-License-Identifier: MIT
#include "zem/Rows/RptInfo.h"

RptInfo::RptInfo()
    : _type(RptByFile), _showHitCounts(0), _markUncovered(1), _showPercentage(0),
      _showLineNumbers(1)
{}

RptInfo::~RptInfo() = default;

RptInfo::RptInfo(const RptInfo& other)
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
    if (keys != nullptr && *keys != '\0') {
        _sortKeys.set(keys);
    }
}

void RptInfo::copyFlags(const RptInfo& other)
{
    _type = other._type;
    _showHitCounts = other._showHitCounts;
    _markUncovered = other._markUncovered;
    _showPercentage = other._showPercentage;
    _showLineNumbers = other._showLineNumbers;
}
