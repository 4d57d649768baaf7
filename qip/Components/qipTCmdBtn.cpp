// SPDX-License-Identifier: MIT
#include "qip/Components/qipTCmdBtn.h"

#include "qip/Components/qipCommand.h"
#include "qip/Monitors/qipTButton_X.h"
#include "qip/Support/qipAssert.h"

#include <new>

qipTCmdBtn::ExecButton::ExecButton(qipCommand* client) : _client(client) {}

qipTCmdBtn::ExecButton::~ExecButton()
{
    if (_client != nullptr) {
        _client->removeServer(this);
    }
}

void qipTCmdBtn::ExecButton::triggered()
{
    if (_client != nullptr) {
        _client->execute();
    }
}

void qipTCmdBtn::ExecButton::clientGone(const qipSensorClient* client)
{
    if (_client != nullptr && client == _client->asClient()) {
        _client = nullptr;
    }
}

qipTCmdBtn::qipTCmdBtn(const char* name, qipCommand* client, const char* label,
                       const char* const* image, const char* const* insensitiveImage)
    : qipTButton(name)
{
    _btn = new (std::nothrow) ExecButton(client);
    qipAssert(_btn != 0);
    _engn = new (std::nothrow) qipTButton_X(name, _btn);
    qipAssert(_engn != 0);
    _btn->engine(_engn);
    _engn->setLabel(label);
    _engn->setImage(image, insensitiveImage);
    client->registerServer(_btn);
}

qipTCmdBtn::~qipTCmdBtn() = default;

const char* qipTCmdBtn::className() const
{
    return "qipTCmdBtn";
}
