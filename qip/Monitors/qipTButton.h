// SPDX-License-Identifier: MIT
//
// A button as a component: a sensor and its engine in one cell, which goes into a tool bar or a
// menu. A subclass makes both in its constructor.
#pragma once

#include "qip/Base/qipVCell.h"

class qipButton;
class qipTButton_X;

class qipTButton : public qipVCell
{
public:
    explicit qipTButton(const char* name);
    qipTButton(const qipTButton&) = delete;
    qipTButton& operator=(const qipTButton&) = delete;
    // Deletes engine and sensor.
    ~qipTButton() override;

    // In a pull-down menu a push button is made: a menu takes nothing else. Elsewhere the tool
    // bar's form. REQUIRES: there is an engine.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Make it sensitive or insensitive. Return 0, or -1 while there is no widget.
    virtual int activate();
    virtual int deactivate();

    // Called for a press. Nothing here.
    virtual void triggered();

    const qipButton* sensor() const { return _btn; }
    const qipTButton_X* engine() const { return _engn; }

protected:
    qipButton* _btn;     // owned, null until the subclass makes it
    qipTButton_X* _engn; // owned, null until the subclass makes it
};
