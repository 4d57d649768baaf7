// SPDX-License-Identifier: MIT
//
// A one-shot alarm: activate() starts it, and after its interval triggered() is called once.
// An interval of 0 disables it.
#pragma once

#include "qip/Monitors/qipSensor.h"

class qipBasicAlarm_impl;

class qipBasicAlarm : public qipSensor
{
public:
    // Makes its X engine.
    qipBasicAlarm();
    // Stops a running alarm.
    ~qipBasicAlarm() override;

    // Starts the alarm, or stops it. REQUIRES of activate(): it is not running.
    int activate() override;
    int deactivate() override;

    const char* className() const override;
    void eventDetected() override;
    void triggered() override = 0;

    // The interval from the next activate() on.
    virtual void setTimer(unsigned long milliseconds);
    unsigned long interval() const { return _interval; } // milliseconds

protected:
    // Takes `engine`, in place of the one that it has.
    void engine(qipBasicAlarm_impl* engine);

    qipBasicAlarm_impl* _engine; // owned
    unsigned long _interval;     // milliseconds
};
