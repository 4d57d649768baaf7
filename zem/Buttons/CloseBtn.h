// SPDX-License-Identifier: MIT
//
// The button that closes a window.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class qipWindow;

class CloseBtn : public QuenzilBtn
{
public:
    // `client`, the window to close, is borrowed.
    CloseBtn(qipWindow* client, const char* const* image);

    const char* className() const override;
    void triggered() override;

private:
    qipWindow* _client;
};
