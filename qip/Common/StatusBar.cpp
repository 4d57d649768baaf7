// SPDX-License-Identifier: MIT
#include "qip/Common/StatusBar.h"

#include "qip/Support/qipVisibleText.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/Xm.h>

#include <cstring>
#include <new>
#include <string>

namespace {

constexpr char MessageTag[] = "FNT_STATUSBAR_MSG";

// Bytes of a text that are shown: the toolkit counts a label's width in 16 bits, and one that is
// wider than that would be next to nothing.
constexpr size_t LongestText = 2000;
constexpr char Cut[] = "...";

} // namespace

StatusBar::StatusBar(const char* name) : qipVCell(name), _msgArea(nullptr), _timer(this) {}

StatusBar::~StatusBar() = default;

void StatusBar::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget("statusbar_work", xmFormWidgetClass, parent->clientArea(),
                                    XmNfractionBase, 20, XmNresizePolicy, XmRESIZE_NONE, nullptr);
    _msgArea =
        XtVaCreateManagedWidget("messageArea", xmLabelWidgetClass, _base, XmNalignment,
                                XmALIGNMENT_BEGINNING, XmNleftAttachment, XmATTACH_FORM, nullptr);
    refresh();
    _clientArea = _base;
    installHelpHandler();
    installDestroyHandler();
}

const char* StatusBar::className() const
{
    return "StatusBar";
}

void StatusBar::destroyed()
{
    // The timer must not fire into a label that is gone.
    _timer.deactivate();
    _msgArea = nullptr;
    qipVCell::destroyed();
}

void StatusBar::setPermanent(const char* text)
{
    if (text != nullptr) {
        _permMsg.set(text);
    }
}

void StatusBar::refresh()
{
    if (_msgArea != nullptr) {
        showMessage(_permMsg == nullptr ? "" : _permMsg.get());
    }
}

void StatusBar::displayMessage(const char* text)
{
    if (text == nullptr || _msgArea == nullptr) {
        return;
    }
    _timer.deactivate();
    showMessage(text);
    _timer.activate();
}

void StatusBar::showMessage(const char* text)
{
    setLabelText(_msgArea, text, MessageTag);
}

void StatusBar::setLabelText(Widget label, const char* text, const char* tag)
{
    const qipVisibleText visible(text);
    std::string copy;
    const bool isTooLong = visible.length() > LongestText;
    if (isTooLong || visible.length() != std::strlen(text)) {
        try {
            copy = visible.string();
            if (isTooLong) {
                copy.resize(LongestText);
                copy += Cut;
            }
        } catch (const std::bad_alloc&) {
            return;
        }
        text = copy.c_str();
    }
    XmString string = XmStringCreate(const_cast<char*>(text), const_cast<char*>(tag));
    if (string != nullptr) {
        XtVaSetValues(label, XmNlabelString, string, nullptr);
        XmStringFree(string);
    }
}

StatusBar::MsgTimeout::MsgTimeout(StatusBar* client) : _client(client)
{
    setTimer(MessageTime);
}

StatusBar::MsgTimeout::~MsgTimeout() = default;

void StatusBar::MsgTimeout::triggered()
{
    _client->refresh();
}
