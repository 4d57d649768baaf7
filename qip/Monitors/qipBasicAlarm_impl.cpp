// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipBasicAlarm_impl.h"

#include "qip/Monitors/qipBasicAlarm.h"

qipBasicAlarm_impl::qipBasicAlarm_impl(qipBasicAlarm* client) : _client(client) {}

qipBasicAlarm_impl::~qipBasicAlarm_impl() = default;

void qipBasicAlarm_impl::triggerSensor()
{
    _client->eventDetected();
}
