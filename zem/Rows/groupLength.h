// SPDX-License-Identifier: MIT
//
// Which directory a file belongs to and which class a function belongs to: how much of its name
// says so.
#pragma once

// The length of the directory in a source file's path, without the slash behind it, or -1 when the
// path names none.
long directoryLength(const char* path);

// The length of the class name in a function's stored name, or -1 when it is no member: what stands
// before the last ':' and the character in front of it, or one character that stands alone.
long classLength(const char* storedName);
