// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipButton.h"

#include "qip/Monitors/qipButton_impl.h"
#include "qip/Support/qipAssert.h"

qipButton::qipButton() : _engine(nullptr) {}

qipButton::~qipButton() = default;

int qipButton::activate()
{
    qipAssert(_engine != 0);
    qipGadget::activate();
    return _engine->activate();
}

int qipButton::deactivate()
{
    qipAssert(_engine != 0);
    qipGadget::deactivate();
    return _engine->deactivate();
}

void qipButton::initialState(qipGadgetStatus status)
{
    qipGadget::initialState(status);
    if (_engine != nullptr) {
        _engine->initialState(status);
    }
}

const char* qipButton::className() const
{
    return "qipButton";
}

void qipButton::eventDetected()
{
    triggered();
}
