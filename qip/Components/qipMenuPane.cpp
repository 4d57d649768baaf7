// SPDX-License-Identifier: MIT
#include "qip/Components/qipMenuPane.h"

#include "qip/Components/qipMenuPane_item.h"
#include "qip/Components/qipSeparator.h"
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipAssert.h"

#include <Xm/CascadeB.h>
#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

#include <new>

namespace {

void setMnemonic(Widget button, char mnemonic)
{
    if (mnemonic != 0 && button != nullptr) {
        XtVaSetValues(button, XmNmnemonic,
                      static_cast<KeySym>(static_cast<unsigned char>(mnemonic)), nullptr);
    }
}

} // namespace

qipMenuPane::qipMenuPane(const char* name, char mnemonic, const char* label)
    : qipVCell(name), _pane(nullptr), _mnemonic(mnemonic)
{
    setLabel(label);
}

qipMenuPane::~qipMenuPane()
{
    ListIterator<qipMenuPane_item*> items(_buttons);
    while (const qipMenuPane_item* item = items.next()) {
        delete item;
    }
    ListIterator<qipSeparator*> separators(_separators);
    while (const qipSeparator* separator = separators.next()) {
        delete separator;
    }
}

void qipMenuPane::setLabel(const char* label)
{
    const bool isSet = _label.set(label);
    qipAssertAs(isSet, "_label != 0");
}

void qipMenuPane::addButton(qipVCell* btn, char mnemonic)
{
    if (btn != nullptr) {
        auto* item = new (std::nothrow) qipMenuPane_item(btn, mnemonic);
        qipAssert(item != 0);
        _buttons.append(item);
    }
}

void qipMenuPane::addSeparator()
{
    auto* separator = new (std::nothrow) qipSeparator("Separator");
    qipAssert(separator != 0);
    _separators.append(separator);
    addButton(separator);
}

void qipMenuPane::install(qipVCell* parent)
{
    _base = XmCreatePulldownMenu(parent->clientArea(), const_cast<char*>(_name.get()), nullptr, 0);
    qipAssert(_base != 0);
    _clientArea = _base;
    installDestroyHandler();
    _pane = XtVaCreateManagedWidget(_name, xmCascadeButtonWidgetClass, parent->clientArea(),
                                    XmNsubMenuId, _base, nullptr);
    setMnemonic(_pane, _mnemonic);
    installLabel();
    installItems();
}

void qipMenuPane::installLabel()
{
    if (_label != nullptr) {
        XmString string = XmStringCreateLocalized(const_cast<char*>(_label.get()));
        XtVaSetValues(_pane, XmNlabelString, string, nullptr);
        XmStringFree(string);
    }
}

void qipMenuPane::installItems()
{
    ListIterator<qipMenuPane_item*> items(_buttons);
    while (const qipMenuPane_item* item = items.next()) {
        item->_btn->install(this);
        setMnemonic(item->_btn->baseWidget(), item->_mnemonic);
    }
}

const char* qipMenuPane::className() const
{
    return "qipMenuPane";
}

void qipMenuPane::destroyed()
{
    _pane = nullptr;
    qipVCell::destroyed();
}
