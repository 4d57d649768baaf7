// SPDX-License-Identifier: MIT
//
// Somebody who keeps a list of sensors that act for him. Client and sensor may go in any order: the
// one that goes first tells the other.
#pragma once

class qipSensor;

class qipSensorClient
{
public:
    // Called by the destructor of `sensor`, once for each time that it was added. The override
    // takes it off its list; the pointer is good for nothing else any more.
    virtual void sensorGone(qipSensor* sensor) = 0;

protected:
    ~qipSensorClient() = default;
};
