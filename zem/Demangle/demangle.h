// SPDX-License-Identifier: MIT
//
// Makes readable names of the encoded function names in map files: a name, "__", and what encodes
// the class and the parameter types.
//
//   encoded                 mode -1           mode 0                      mode 1
//   __ct__7RptAreaFPCc      RptArea::RptArea  RptArea::RptArea(char *)    ...(const char *)
//   hits__C7ZEMViewFv       ZEMView::hits     ZEMView::hits() const       the same
//   append__t4List1ZiFi     List<int>::append List<int>::append(int)      the same
//
// What stands behind the first "__":
//
//   digits name    member of the class whose name has that many characters; an optional F and
//                  the parameters follow
//   C digits name  a const member function
//   t              a template class: name, number of arguments, the arguments, each Z and a type,
//                  or a type and a value
//   F              the parameters of a function of no class
//
// At the start of the name or behind a ':', __ct and __dt are constructor and destructor, "__" with
// a class right behind it is a constructor, and __xx__ is an operator (or __opTYPE__ a conversion).
//
// Parameters are types, one behind the other: P pointer, R reference, C const, V volatile, U
// unsigned, S signed, M member pointer, F function, Q qualified name, T repeats an earlier
// parameter, N several times; v x l i s c r d f e and class names are the bases. Behind Q stand the
// number of names and the names, each with its length: Q23Foo3Bar. A number of two digits or more
// stands between underscores: Q_12_.
#pragma once

// How much of a name is readable text.
enum DemangleMode {
    DemangleName = -1,     // the qualified name alone
    DemangleTypes = 0,     // with the parameter types
    DemangleModifiers = 1, // with their const and volatile, too
};

// Returns the readable name in memory that the caller frees with free(), or null when `encoded` is
// null, empty, no encoded name, malformed, or so made that its readable form would be out of all
// proportion (64 KiB and 64 times its length), would cost work out of all proportion (see Decoder),
// or nests more than 1000 function types.
//
// `mode` is a DemangleMode; any other number counts as the nearest. Without memory the program ends
// with status 1.
char* demangle_name(const char* encoded, int mode);
