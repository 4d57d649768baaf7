// SPDX-License-Identifier: MIT
//
// One scroll bar of a scrolled window, in cells. The window makes, owns and adjusts it; a user who
// moves it scrolls the window.
#pragma once

#include "qip/Base/qipVCell.h"

class qipScrolledWindow;

class qipScrollBar : public qipVCell
{
public:
    // `orientation` is XmHORIZONTAL or XmVERTICAL; `client` is borrowed and outlives the bar.
    qipScrollBar(const char* name, qipScrolledWindow* client, unsigned char orientation);
    ~qipScrollBar() override;

    // Creates the Motif scroll bar in the client's scrolled window.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // The user moved the bar to `v`: scrolls the client when that is news, and draws it again.
    virtual void scroll(int v);

    // Before install() these only store what the bar will start with.
    void currentValue(int v);
    void maxValue(int v);
    void pageLength(int v);
    // All at once. REQUIRES: 0 <= value, value + page <= max, 1 <= page.
    void adjustValues(int value, int max, int page);

    int currentValue() const { return _curValue; }
    int maxValue() const { return _maxValue; }
    int pageLength() const { return _pageLength; }

protected:
    // Scrolls the client along this bar's axis.
    virtual void scrollClient(int v) = 0;

    qipScrolledWindow* _client;
    int _curValue;
    int _maxValue;
    int _pageLength;
    unsigned char _orientation;

private:
    void setWidget();
    static void valueChanged_cbk(Widget widget, XtPointer bar, XtPointer callData);
};
