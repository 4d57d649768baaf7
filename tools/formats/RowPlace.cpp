// SPDX-License-Identifier: MIT
#include "tools/formats/RowPlace.h"

#include "qip/Support/orEmpty.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/ZEMView.h"

RowPlace::RowPlace(const ZEMView& row, RptType type) : _path(""), _line(0)
{
    const ZEMRecord* file = row._owner;
    if (file != nullptr && type == RptByFunction) {
        _line = static_cast<const ZEMFuncRecord*>(file)->_startLine;
        file = file->_owner;
    }
    if (file != nullptr) {
        _path = orEmpty(static_cast<const ZEMFileRecord*>(file)->_filename);
    }
}
