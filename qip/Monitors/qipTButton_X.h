// SPDX-License-Identifier: MIT
//
// A tool bar's button: a form with the push button "_button", which has the picture, and below it
// the label "_label", which has the text and is shown only when there is one.
#pragma once

#include "qip/Monitors/qipButton_X.h"

class qipTButton_X : public qipButton_X
{
public:
    qipTButton_X(const char* name, qipButton* client);
    ~qipTButton_X() override;

    void install(qipVCell* parent) override;
    const char* className() const override;

    // Rewrites the label; null is ignored, before install() nothing happens.
    void updateLabel(const char* text);

protected:
    void destroyed() override;

private:
    Widget _labelWidget; // null before install() and once it is gone
};
