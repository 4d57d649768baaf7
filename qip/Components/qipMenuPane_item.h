// SPDX-License-Identifier: MIT
//
// One entry of a menu pane: a cell and its mnemonic.
#pragma once

class qipVCell;

class qipMenuPane_item
{
public:
    qipMenuPane_item(qipVCell* btn, char mnemonic) : _mnemonic(mnemonic), _btn(btn) {}

    char _mnemonic; // 0 for none
    qipVCell* _btn; // borrowed
};
