// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipGadget.h"

qipGadget::qipGadget() : _status(qipGadgetActive), _initialState(qipGadgetActive) {}

qipGadget::~qipGadget() = default;

int qipGadget::activate()
{
    _status = qipGadgetActive;
    return 0;
}

int qipGadget::deactivate()
{
    _status = qipGadgetInactive;
    return 0;
}

void qipGadget::initialState(qipGadgetStatus status)
{
    _initialState = status;
    _status = status;
}

const char* qipGadget::className() const
{
    return "qipGadget";
}
