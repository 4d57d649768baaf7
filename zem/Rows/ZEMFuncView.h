// SPDX-License-Identifier: MIT
//
// The row of a function; its record is the ZEMFuncRecord. See ZEMView for who owns what.
#pragma once

#include "zem/Rows/ZEMFileView.h"

class ZEMFuncView : public ZEMFileView
{
public:
    ZEMFuncView();
    // Frees the function name, of which the label is an alias.
    ~ZEMFuncView() override;

    // The name as it is shown; "" while it is unset. The setter keeps a copy and ignores null.
    const char* funcname() const override;
    void funcname(const char* name);

    // The label is the function name itself, not a copy.
    void setLabel() override;

    char* _funcname; // owned, or null
};
