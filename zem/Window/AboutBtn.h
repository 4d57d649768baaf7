// SPDX-License-Identifier: MIT
//
// The entry "About ..." of the help menu: shows the topic "about".
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class AboutBtn : public QuenzilBtn
{
public:
    // The label has the application's name as it is now. REQUIRES: theApplication exists.
    AboutBtn();

    const char* className() const override;
    void triggered() override;
};
