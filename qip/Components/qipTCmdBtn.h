// SPDX-License-Identifier: MIT
//
// A button that executes a command and is sensitive while the command is enabled.
#pragma once

#include "qip/Monitors/qipButton.h"
#include "qip/Monitors/qipTButton.h"

class qipCommand;

class qipTCmdBtn : public qipTButton
{
public:
    // The sensor: it is on the command's list while it lives.
    class ExecButton : public qipButton
    {
    public:
        // `client` is borrowed. It outlives the button, unless the button is on its list: then the
        // button learns of its end.
        explicit ExecButton(qipCommand* client);
        ~ExecButton() override;
        // Executes the command; nothing once it is gone.
        void triggered() override;
        void clientGone(const qipSensorClient* client) override;

    private:
        qipCommand* _client; // null once it is gone
    };

    // `label` and the XPM pictures may be null.
    qipTCmdBtn(const char* name, qipCommand* client, const char* label,
               const char* const* image = nullptr, const char* const* insensitiveImage = nullptr);
    ~qipTCmdBtn() override;
    const char* className() const override;
};
