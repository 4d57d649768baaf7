// SPDX-License-Identifier: MIT
//
// A sensor for a button press. Its engine has the widget; what a press does stands in a subclass's
// triggered().
#pragma once

#include "qip/Monitors/qipSensor.h"

class qipButton_impl;

class qipButton : public qipSensor
{
public:
    qipButton();
    ~qipButton() override;

    // Borrows the engine, which whoever made it deletes.
    void engine(qipButton_impl* engine) { _engine = engine; }

    // Make the button sensitive or insensitive. Return 0, or -1 while there is no widget; the
    // state is then the one that the widget will start in. REQUIRES: there is an engine.
    int activate() override;
    int deactivate() override;
    void initialState(qipGadgetStatus status) override;

    const char* className() const override;
    void eventDetected() override;

protected:
    qipButton_impl* _engine;
};
