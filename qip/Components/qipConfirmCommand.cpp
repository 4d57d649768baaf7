// SPDX-License-Identifier: MIT
#include "qip/Components/qipConfirmCommand.h"

#include "qip/Support/qipAssert.h"

#include <cstring>
#include <new>

qipConfirmCommand::qipConfirmCommand(const char* name, int disabled, int confirm)
    : qipCommand(name, disabled), _confirm(confirm), _question(nullptr)
{
    setQuestion("Execute this command?");
}

qipConfirmCommand::~qipConfirmCommand()
{
    delete[] _question;
}

void qipConfirmCommand::setQuestion(const char* text)
{
    delete[] _question;
    _question = new (std::nothrow) char[std::strlen(text) + 1];
    qipAssert(_question != 0);
    std::strcpy(_question, text);
}

int qipConfirmCommand::execute()
{
    return qipCommand::execute();
}

const char* qipConfirmCommand::className() const
{
    return "qipConfirmCommand";
}
