// SPDX-License-Identifier: MIT
#include "zem/Buttons/CloseBtn.h"

#include "qip/Base/qipWindow.h"

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
