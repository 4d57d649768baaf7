// SPDX-License-Identifier: MIT
//
// Base of the viewer's command buttons. Each command stands in a menu, with a text, or in a tool
// bar, with a picture; triggered() is what it does.
#pragma once

#include "qip/Monitors/qipTButton.h"

class QuenzilBtn : public qipTButton
{
public:
    // `name` is the widget's name. `label` and the XPM pictures may be null; the pictures are
    // borrowed for life.
    QuenzilBtn(const char* name, const char* label, const char* const* image,
               const char* const* image2);
    ~QuenzilBtn() override;

    const char* className() const override;

private:
    class Sensor;
};
