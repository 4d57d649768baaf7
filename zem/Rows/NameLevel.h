// SPDX-License-Identifier: MIT
//
// How the function report writes names: as the map stores them, or readable with more or less of
// their parameters. The numbers are those of the interfaces that take an int.
#pragma once

enum NameLevel {
    StoredNames = 0,
    SimpleNames = 1,   // without parameters
    ExtendedNames = 2, // with the types of the parameters
    ModifiedNames = 3, // with const and volatile, too
};
