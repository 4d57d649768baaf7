// SPDX-License-Identifier: MIT
#include "qip/Components/qipCommand.h"

#include "qip/Monitors/qipSensor.h"
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipAssert.h"

#include <iostream>

qipCommand::qipCommand(const char* name, int disabled) : _disabled(disabled), _client(this)
{
    setName(name);
}

qipCommand::~qipCommand()
{
    // Each is off the list before it is told: what it does then may be its own end.
    while (qipSensor* sensor = _triggers.first()) {
        removeServer(sensor);
        sensor->clientGone(&_client);
        sensor->deactivate();
    }
}

void qipCommand::setName(const char* name)
{
    if (name == nullptr) {
        std::cerr << "*** Internal Error: Attempt to construct a nameless Command. QCMD:ERR-0001"
                  << std::endl;
        name = "Nameless Command";
    }
    _name.set(name);
    qipAssert(_name != 0);
}

int qipCommand::registerServer(qipSensor* ifac)
{
    qipAssert(ifac != 0);
    const int before = _triggers.length();
    const int length = _triggers.append(ifac);
    if (length > before) {
        ifac->addClient(&_client);
        ifac->initialState(_disabled == 0 ? qipGadgetActive : qipGadgetInactive);
    }
    return length;
}

int qipCommand::removeServer(qipSensor* sensor)
{
    const int result = _triggers.remove(sensor);
    if (result == 0) {
        sensor->removeClient(&_client);
    }
    return result;
}

void qipCommand::Client::sensorGone(qipSensor* sensor)
{
    _command->_triggers.remove(sensor);
}

int qipCommand::inActivationList(qipCommand* command)
{
    return _activationList.append(command);
}

int qipCommand::inDeactivationList(qipCommand* command)
{
    return _deactivationList.append(command);
}

int qipCommand::disable()
{
    if (++_disabled == 1) {
        ListIterator<qipSensor*> sensors(_triggers);
        while (qipSensor* sensor = sensors.next()) {
            sensor->deactivate();
        }
    }
    return 0;
}

int qipCommand::enable()
{
    if (_disabled == 0) {
        return 0;
    }
    if (--_disabled == 0) {
        ListIterator<qipSensor*> sensors(_triggers);
        while (qipSensor* sensor = sensors.next()) {
            sensor->activate();
        }
    }
    return _disabled;
}

int qipCommand::execute()
{
    if (_disabled != 0) {
        return -1;
    }
    const int result = doit();
    if (result == 0) {
        ListIterator<qipCommand*> enabled(_activationList);
        while (qipCommand* command = enabled.next()) {
            command->enable();
        }
        ListIterator<qipCommand*> disabled(_deactivationList);
        while (qipCommand* command = disabled.next()) {
            command->disable();
        }
    }
    return result;
}

const char* qipCommand::className() const
{
    return "qipCommand";
}
