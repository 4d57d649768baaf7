// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipSensor_impl.h"

qipSensor_impl::~qipSensor_impl() = default;
