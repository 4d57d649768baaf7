// SPDX-License-Identifier: MIT
//
// An alarm's engine on the X toolkit: an application time-out.
#pragma once

#include "qip/Monitors/qipBasicAlarm_impl.h"

#include <X11/Intrinsic.h>

class qipBasicAlarm_X : public qipBasicAlarm_impl
{
public:
    explicit qipBasicAlarm_X(qipBasicAlarm* client);
    // Takes a running time-out back.
    ~qipBasicAlarm_X() override;

    int set(unsigned long milliseconds) override;

    // Stops the time-out. Returns 0, or -1 when none was ever set since the last call.
    int deactivate() override;

private:
    static void timeout_cbk(XtPointer clientData, XtIntervalId* id_p);

    // Kept when the time-out fires. The toolkit gives the ids of fired time-outs to new ones, which
    // may be anyone's, so `_pending` decides whether there is something to remove.
    unsigned long _timerId; // 0 when none was set
    bool _pending;
};
