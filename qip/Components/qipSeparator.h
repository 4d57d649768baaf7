// SPDX-License-Identifier: MIT
//
// A line between the entries of a menu.
#pragma once

#include "qip/Base/qipVCell.h"

class qipSeparator : public qipVCell
{
public:
    explicit qipSeparator(const char* name);
    ~qipSeparator() override;

    void install(qipVCell* parent) override;
    const char* className() const override;
};
