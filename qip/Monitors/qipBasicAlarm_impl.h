// SPDX-License-Identifier: MIT
//
// What an alarm asks of the window system: one time-out.
#pragma once

#include "qip/Monitors/qipSensor_impl.h"

class qipBasicAlarm;

class qipBasicAlarm_impl : public qipSensor_impl
{
public:
    // `client` is borrowed and owns this engine.
    explicit qipBasicAlarm_impl(qipBasicAlarm* client);
    ~qipBasicAlarm_impl() override;

    // Tells the client that the time is over.
    void triggerSensor();

    // Starts a time-out of `milliseconds`. Returns 0, or -1 for 0 milliseconds and when there is
    // none to be had. REQUIRES: none is running; deactivate() stops one.
    virtual int set(unsigned long milliseconds) = 0;

protected:
    qipBasicAlarm* _client;
};
