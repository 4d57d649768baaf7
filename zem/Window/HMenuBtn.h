// SPDX-License-Identifier: MIT
//
// An entry of the help menu: shows the topic that it is named after.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class HMenuBtn : public QuenzilBtn
{
public:
    HMenuBtn(const char* topic, const char* label);

    const char* className() const override;
    void triggered() override;
};
