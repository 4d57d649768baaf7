// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipBasicAlarm.h"

#include "qip/Monitors/qipBasicAlarm_X.h"
#include "qip/Support/qipAssert.h"

#include <new>

qipBasicAlarm::qipBasicAlarm() : _engine(new (std::nothrow) qipBasicAlarm_X(this)), _interval(0) {}

qipBasicAlarm::~qipBasicAlarm()
{
    delete _engine;
}

void qipBasicAlarm::engine(qipBasicAlarm_impl* engine)
{
    delete _engine;
    _engine = engine;
}

int qipBasicAlarm::activate()
{
    if (_interval == 0) {
        return 0;
    }
    qipGadget::activate();
    qipAssert(_engine != 0);
    return _engine->set(_interval);
}

int qipBasicAlarm::deactivate()
{
    if (_interval == 0) {
        return 0;
    }
    qipGadget::deactivate();
    qipAssert(_engine != 0);
    return _engine->deactivate();
}

const char* qipBasicAlarm::className() const
{
    return "qipBasicAlarm";
}

void qipBasicAlarm::eventDetected()
{
    triggered();
}

void qipBasicAlarm::setTimer(unsigned long milliseconds)
{
    _interval = milliseconds;
}
