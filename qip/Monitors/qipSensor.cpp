// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipSensor.h"

qipSensor::qipSensor() = default;

qipSensor::~qipSensor() = default;

const char* qipSensor::className() const
{
    return "qipSensor";
}

void qipSensor::eventDetected()
{
    triggered();
}

void qipSensor::triggered() {}
