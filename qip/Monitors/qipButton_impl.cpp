// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipButton_impl.h"

#include "qip/Monitors/qipButton.h"

qipButton_impl::qipButton_impl(qipButton* client) : _client(client) {}

qipButton_impl::~qipButton_impl() = default;

void qipButton_impl::triggerSensor()
{
    _client->eventDetected();
}
