// SPDX-License-Identifier: MIT
//
// The menu at the help position of the menu bar, its right end.
#pragma once

#include "qip/Components/qipMenuPane.h"

class qipHelpMenuPane : public qipMenuPane
{
public:
    qipHelpMenuPane(const char* name, char mnemonic, const char* label);
    ~qipHelpMenuPane() override;

    void install(qipVCell* parent) override;
    const char* className() const override;
};
