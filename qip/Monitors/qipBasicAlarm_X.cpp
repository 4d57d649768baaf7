// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipBasicAlarm_X.h"

#include "qip/Base/qipApplication.h"
#include "qip/Support/qipAssert.h"

qipBasicAlarm_X::qipBasicAlarm_X(qipBasicAlarm* client)
    : qipBasicAlarm_impl(client), _timerId(0), _pending(false)
{}

qipBasicAlarm_X::~qipBasicAlarm_X()
{
    if (_pending) {
        XtRemoveTimeOut(_timerId);
    }
}

int qipBasicAlarm_X::set(unsigned long milliseconds)
{
    if (milliseconds == 0) {
        return -1;
    }
    qipAssert(theApplication->appContext() != 0);
    _timerId = XtAppAddTimeOut(theApplication->appContext(), milliseconds, timeout_cbk, this);
    _pending = true;
    return 0;
}

int qipBasicAlarm_X::deactivate()
{
    if (_timerId == 0) {
        return -1;
    }
    if (_pending) {
        XtRemoveTimeOut(_timerId);
        _pending = false;
    }
    _timerId = 0;
    return 0;
}

void qipBasicAlarm_X::timeout_cbk(XtPointer clientData, XtIntervalId* id_p)
{
    qipAssert(clientData != 0);
    qipAssert(id_p != 0);
    auto* alarm = static_cast<qipBasicAlarm_X*>(clientData);
    qipAssert(alarm->_timerId == *id_p);
    alarm->_pending = false;
    alarm->triggerSensor();
}
