// SPDX-License-Identifier: MIT
//
// A line of text at the bottom of a window. It shows a permanent message, which a transient one
// covers for three seconds.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Monitors/qipTimeout.h"
#include "qip/Support/qipCString.h"

class StatusBar : public qipVCell
{
public:
    // How long a transient message stays, in milliseconds.
    static constexpr unsigned long MessageTime = 3000;

    explicit StatusBar(const char* name);
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    ~StatusBar() override;

    // Creates the form "statusbar_work" with the label "messageArea" and shows the permanent
    // message.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Keeps a copy of `text` as the permanent message; null is ignored. refresh() shows it.
    void setPermanent(const char* text);

    // Shows the permanent message, or nothing when there is none. Does nothing before install().
    virtual void refresh();

    // Shows `text` for three seconds from now, in place of any other message; null is ignored.
    void displayMessage(const char* text);

    const char* permanent() const { return _permMsg; } // null until one is set

protected:
    void destroyed() override;

    // Puts `text` into the message label. Called for every change of it.
    virtual void showMessage(const char* text);

    // Sets the text of a label, as qipVisibleText prints it and no more than 2000 bytes of that, in
    // the font of `tag`. When no compound string can be made the label keeps its text.
    static void setLabelText(Widget label, const char* text, const char* tag);

    qipCString _permMsg; // null until one is set
    Widget _msgArea;     // the message label, null before install() and once it is gone

private:
    class MsgTimeout : public qipTimeout
    {
    public:
        explicit MsgTimeout(StatusBar* client);
        ~MsgTimeout() override;
        void triggered() override;

    private:
        StatusBar* _client;
    };

    MsgTimeout _timer;
};
