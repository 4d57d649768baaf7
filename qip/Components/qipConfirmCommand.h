// SPDX-License-Identifier: MIT
//
// A command with a question that belongs to it. The question is kept, not asked: execute() acts at
// once. Pinned by qipCommandTest.ConfirmCommandAsksNothing.
#pragma once

#include "qip/Components/qipCommand.h"

class qipConfirmCommand : public qipCommand
{
public:
    qipConfirmCommand(const char* name, int disabled, int confirm);
    ~qipConfirmCommand() override;

    int execute() override;
    const char* className() const override;

    // Keeps a copy. REQUIRES: text is not null.
    void setQuestion(const char* text);
    const char* question() const { return _question; }
    int confirm() const { return _confirm; }

private:
    int _confirm;
    qipCString _question;
};
