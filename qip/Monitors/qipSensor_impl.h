// SPDX-License-Identifier: MIT
//
// Base of the engines: the half of a sensor that works with the window system.
#pragma once

#include "qip/Monitors/qipGadget.h"

class qipSensor_impl : public qipGadget
{
public:
    ~qipSensor_impl() override;
};
