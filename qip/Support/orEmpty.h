// SPDX-License-Identifier: MIT
#pragma once

// `text`, or the empty text in place of null.
inline const char* orEmpty(const char* text)
{
    return text == nullptr ? "" : text;
}
