// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipTimeout.h"

qipTimeout::~qipTimeout() = default;

const char* qipTimeout::className() const
{
    return "qipTimeout";
}
