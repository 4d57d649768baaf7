// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcLine.h"

SrcLine::SrcLine() : _nBlocks(0), _hits(NoBlock), _hitMap(nullptr) {}

SrcLine::~SrcLine()
{
    dropMap();
}

void SrcLine::saveSourceLine(char* text, int len)
{
    keepText(text, len);
}

void SrcLine::dropMap()
{
    if (_hitMap != &_hits) {
        delete[] _hitMap;
    }
    _hitMap = nullptr;
}

void SrcLine::showBlock(int32_t hits)
{
    dropMap();
    _nBlocks = 1;
    _hits = hits;
    _hitMap = &_hits;
}

void SrcLine::showBlocks(int32_t* map, int32_t nBlocks, int32_t hits)
{
    dropMap();
    _nBlocks = nBlocks;
    _hits = hits;
    _hitMap = map;
}
