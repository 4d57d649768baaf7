// SPDX-License-Identifier: MIT
//
// The one place where an action lives. What triggers it, its sensors, registers with it and is
// switched active and inactive with it. Disabling nests: n times needs n times enabling.
//
// A command owns neither its sensors nor the commands that it switches. Sensors and command may be
// destroyed in any order: a sensor that goes is off the list, a command that goes switches its
// sensors off. The commands that it switches outlive it or are not executed any more.
#pragma once

#include "qip/Monitors/qipSensorClient.h"
#include "qip/Support/List.h"
#include "qip/Support/qipCString.h"

class qipSensor;

class qipCommand
{
public:
    // A null name is reported and replaced. `disabled` is how often enable() is needed.
    explicit qipCommand(const char* name, int disabled = 0);
    qipCommand(const qipCommand&) = delete;
    qipCommand& operator=(const qipCommand&) = delete;

    // The action. Called by execute(); returns 0 for success.
    virtual int doit() = 0;
    // Deactivates the sensors and takes them off.
    virtual ~qipCommand();

    // Runs doit() and returns its result. After success the commands of the activation list are
    // enabled, then those of the deactivation list disabled. A disabled command does nothing and
    // returns -1.
    virtual int execute();
    virtual const char* className() const;

    // Adds a sensor, which takes the command's state, or takes it off. Return the number of
    // sensors, or 0 and -1. REQUIRES: the sensor is not null.
    int registerServer(qipSensor* ifac);
    int removeServer(qipSensor* sensor);

    // Adds a command to be enabled or disabled after a success. Return the list's length.
    int inActivationList(qipCommand* command);
    int inDeactivationList(qipCommand* command);

    // disable() returns 0. enable() returns how often it is still needed; an enabled command stays
    // as it is.
    int disable();
    int enable();
    bool isEnabled() const { return _disabled == 0; }

    // As whom its sensors know this command.
    const qipSensorClient* asClient() const { return &_client; }

    const char* name() const { return _name; }

protected:
    void setName(const char* name);

private:
    // The command's end of the bond with its sensors.
    class Client : public qipSensorClient
    {
    public:
        explicit Client(qipCommand* command) : _command(command) {}
        void sensorGone(qipSensor* sensor) override;

    private:
        qipCommand* _command;
    };

    List<qipSensor*> _triggers;
    List<qipCommand*> _activationList;
    List<qipCommand*> _deactivationList;
    int _disabled; // 0 is enabled
    qipCString _name;
    Client _client;
};
