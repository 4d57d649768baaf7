// SPDX-License-Identifier: MIT
//
// One pull-down menu of a menu bar. It is described first, with addButton() and addSeparator(), and
// realised in one install(). The buttons are the caller's and outlive the pane's widgets.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Support/List.h"

class qipMenuPane_item;
class qipSeparator;

class qipMenuPane : public qipVCell
{
public:
    // `mnemonic` is a letter of the label, 0 for none; a copy of the label is kept.
    qipMenuPane(const char* name, char mnemonic, const char* label);
    qipMenuPane(const qipMenuPane&) = delete;
    qipMenuPane& operator=(const qipMenuPane&) = delete;
    ~qipMenuPane() override;

    // Adds an entry, borrowed; null is ignored.
    void addButton(qipVCell* btn, char mnemonic = 0);
    void addSeparator();

    // Creates the pull-down with its entries, and the cascade button in the menu bar `parent`.
    void install(qipVCell* parent) override;
    const char* className() const override;

    void setLabel(const char* label);
    const char* label() const { return _label; }
    Widget cascadeButton() const { return _pane; }

protected:
    void destroyed() override;

    Widget _pane; // the cascade button; null before install() and once it is gone

private:
    void installLabel();
    void installItems();

    char* _label; // owned
    char _mnemonic;
    List<qipMenuPane_item*> _buttons; // owned
    List<qipSeparator*> _separators;  // owned; the buttons are the caller's
};
