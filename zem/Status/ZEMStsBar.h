// SPDX-License-Identifier: MIT
//
// The viewer's status bar: messages on the left, the block summary on the right. A message that
// does not fit beside the summary is clipped.
#pragma once

#include "qip/Common/StatusBar.h"

class ZEMStsBar : public StatusBar
{
public:
    explicit ZEMStsBar(const char* name);
    ~ZEMStsBar() override;

    // Creates the form "statusbar_work" with the frames "statFrame" (label "msgLbl") and "covFrame"
    // (label "coverageSummary"). The message is empty until the next refresh().
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Shows the topic "overview".
    void helpRequested() const override;

    // Shows the summary of `untested` of `total` blocks. Does nothing before install().
    void coverageSummary(long untested, long total);

    // Makes `text`, the description of the report, the permanent message and shows it.
    void reportInfo(const char* text);

protected:
    void destroyed() override;
    void showMessage(const char* text) override;

private:
    void fitMessage();
    static void resized_cbk(Widget widget, XtPointer bar, XEvent* event, Boolean* goOn);

    Widget _coverageSummary; // null before install() and once it is gone
};

// The viewer's one status bar; null in a program without a window.
extern ZEMStsBar* theStatusBar;
