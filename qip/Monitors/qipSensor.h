// SPDX-License-Identifier: MIT
//
// A gadget that notices an event and acts on it. What delivers the event calls eventDetected();
// what should happen stands in a subclass's triggered().
//
// A sensor is on the lists of its clients, usually one command. It takes itself off them when it
// goes, whichever of them goes first.
#pragma once

#include "qip/Monitors/qipGadget.h"
#include "qip/Support/List.h"

class qipSensorClient;

class qipSensor : public qipGadget
{
public:
    qipSensor();
    ~qipSensor() override;

    const char* className() const override;

    // The event has happened.
    virtual void eventDetected();
    // Acts on it. Nothing here.
    virtual void triggered();

    // Called by a client that puts the sensor on its list, and that takes it off; borrowed in
    // between. Once for each entry on the list.
    void addClient(qipSensorClient* client);
    void removeClient(qipSensorClient* client);

    // Called by the destructor of a client, which has switched the sensor off and taken it off its
    // list. An override forgets the client. Nothing here.
    virtual void clientGone(const qipSensorClient* client);

private:
    List<qipSensorClient*> _clients; // not owned
};
