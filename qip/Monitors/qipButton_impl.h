// SPDX-License-Identifier: MIT
//
// What a button asks of the window system: something to press.
#pragma once

#include "qip/Monitors/qipSensor_impl.h"

class qipButton;

class qipButton_impl : public qipSensor_impl
{
public:
    // `client` is borrowed.
    explicit qipButton_impl(qipButton* client);
    ~qipButton_impl() override;

    // Tells the client that the button has been pressed.
    void triggerSensor();

protected:
    qipButton* _client;
};
