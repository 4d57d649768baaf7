// SPDX-License-Identifier: MIT
//
// A gadget that notices an event and acts on it. What delivers the event calls eventDetected();
// what should happen stands in a subclass's triggered().
#pragma once

#include "qip/Monitors/qipGadget.h"

class qipSensor : public qipGadget
{
public:
    qipSensor();
    ~qipSensor() override;

    const char* className() const override;

    // The event has happened.
    virtual void eventDetected();
    // Acts on it. Nothing here.
    virtual void triggered();
};
