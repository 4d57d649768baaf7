// SPDX-License-Identifier: MIT
#include "qip/Components/qipConfirmCommand.h"

#include "qip/Support/qipAssert.h"

qipConfirmCommand::qipConfirmCommand(const char* name, int disabled, int confirm)
    : qipCommand(name, disabled), _confirm(confirm)
{
    setQuestion("Execute this command?");
}

qipConfirmCommand::~qipConfirmCommand() = default;

void qipConfirmCommand::setQuestion(const char* text)
{
    _question.set(text);
    qipAssert(_question != 0);
}

int qipConfirmCommand::execute()
{
    return qipCommand::execute();
}

const char* qipConfirmCommand::className() const
{
    return "qipConfirmCommand";
}
