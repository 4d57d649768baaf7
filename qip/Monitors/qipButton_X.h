// SPDX-License-Identifier: MIT
//
// A button's engine on Motif: a push button with a text or a picture. It is also the cell of that
// widget.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Drawing/qipIcon.h"
#include "qip/Monitors/qipButton_impl.h"

#include <memory>

class qipButton_X : public qipVCell, public qipButton_impl
{
public:
    // `name` is the widget's; `client` is borrowed.
    qipButton_X(const char* name, qipButton* client);
    qipButton_X(const qipButton_X&) = delete;
    qipButton_X& operator=(const qipButton_X&) = delete;
    // Takes its callback off a widget that lives on.
    ~qipButton_X() override;

    // The text of the button; a copy is kept, null is ignored. Counts from install() on.
    virtual void setLabel(const char* text);

    // The pictures of the button and of the insensitive button, XPM lines that are borrowed for
    // life. Null is ignored. Count from install() on.
    void setImage(const char* const* image, const char* const* insensitiveImage);

    // Creates the push button, in the state that the gadget is in.
    void install(qipVCell* parent) override;
    const char* className() const override;

    int activate() override;
    int deactivate() override;
    void initialState(qipGadgetStatus status) override;

    const char* label() const { return _label; } // null while there is none
    bool hasImage() const { return _image != nullptr; }

protected:
    void destroyed() override;

    // Puts the pictures on `button` and has its presses reported. `_base` is set.
    void equip(Widget button);

    // Sets the text of a label or button in the font of buttons.
    static void setText(Widget widget, const char* text);

    char* _label;   // owned
    Widget _button; // what is pressed; null before install() and once it is gone
    std::unique_ptr<qipIcon> _image;
    std::unique_ptr<qipIcon> _insensitiveImage;

private:
    static void pressed_cbk(Widget widget, XtPointer button, XtPointer callData);
};
