// SPDX-License-Identifier: MIT
//
// Anything that can be switched active and inactive.
#pragma once

// On which state a gadget starts in, and which it is in.
enum qipGadgetStatus { qipGadgetInactive = 1, qipGadgetActive = 2 };

class qipGadget
{
public:
    // Active.
    qipGadget();
    qipGadget(const qipGadget&) = delete;
    qipGadget& operator=(const qipGadget&) = delete;
    virtual ~qipGadget();

    // Return 0, or -1 when the state could not be changed.
    virtual int activate();
    virtual int deactivate();

    // The state to be in from the start; also the state to be in now.
    virtual void initialState(qipGadgetStatus status);

    virtual const char* className() const;

    int status() const { return _status; }

protected:
    int _status;
    int _initialState;
};
