// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipSensor.h"

#include "qip/Monitors/qipSensorClient.h"

qipSensor::qipSensor() = default;

qipSensor::~qipSensor()
{
    while (qipSensorClient* client = _clients.first()) {
        _clients.remove(client);
        client->sensorGone(this);
    }
}

const char* qipSensor::className() const
{
    return "qipSensor";
}

void qipSensor::eventDetected()
{
    triggered();
}

void qipSensor::triggered() {}

void qipSensor::addClient(qipSensorClient* client)
{
    _clients.append(client);
}

void qipSensor::removeClient(qipSensorClient* client)
{
    _clients.remove(client);
}

void qipSensor::clientGone(const qipSensorClient*) {}
