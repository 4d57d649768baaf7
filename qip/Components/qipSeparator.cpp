// SPDX-License-Identifier: MIT
#include "qip/Components/qipSeparator.h"

#include "qip/Support/qipAssert.h"

#include <Xm/SeparatoG.h>
#include <Xm/Xm.h>

qipSeparator::qipSeparator(const char* name) : qipVCell(name) {}

qipSeparator::~qipSeparator() = default;

void qipSeparator::install(qipVCell* parent)
{
    _base = XtCreateManagedWidget(_name, xmSeparatorGadgetClass, parent->clientArea(), nullptr, 0);
    qipAssert(_base != 0);
    _clientArea = _base;
    installDestroyHandler();
}

const char* qipSeparator::className() const
{
    return "qipSeparator";
}
