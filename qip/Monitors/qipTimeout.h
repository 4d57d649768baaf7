// SPDX-License-Identifier: MIT
//
// An alarm to derive from: one time-out at a time.
#pragma once

#include "qip/Monitors/qipBasicAlarm.h"

class qipTimeout : public qipBasicAlarm
{
public:
    ~qipTimeout() override;
    const char* className() const override;
};
