// SPDX-License-Identifier: MIT
//
// The command that opens and hides the source view. In the menu and the tool bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class SrcBtn : public QuenzilBtn
{
public:
    // For the menu, and for the tool bar.
    SrcBtn();
    SrcBtn(const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;
    void triggered() override;
};
