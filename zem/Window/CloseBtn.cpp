// SPDX-License-Identifier: MIT
#include "zem/Window/CloseBtn.h"

#include "qip/Components/qipWindow.h"

CloseBtn::CloseBtn(qipWindow* client, const char* const* image)
    : QuenzilBtn("closeBtn", nullptr, image, image), _client(client)
{}

const char* CloseBtn::className() const
{
    return "CloseBtn";
}

void CloseBtn::triggered()
{
    _client->close();
}
