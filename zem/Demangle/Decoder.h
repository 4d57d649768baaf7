// SPDX-License-Identifier: MIT
//
// Decodes one encoded name (see demangle.h). Used for one name and dropped.
//
// What a name costs is bounded, not only how long it gets: types can repeat types that repeat
// others, and a long one that shows little can be repeated ten thousand times. The work is counted
// while it is done.
#pragma once

#include "zem/Demangle/Cursor.h"
#include "zem/Demangle/growString.h"

#include <cstddef>

namespace Demangle {

class TypeVec;

class Decoder
{
public:
    // `encoded` is borrowed; `mode` is a DemangleMode.
    Decoder(const char* encoded, int mode);
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    // Decodes the name into `name`, which is empty; false when it is no encoded name, or too long
    // or too much work.
    bool decode(string& name);

    // What was done, in types, modifiers and stretches of text, and the most that is done before a
    // name is given up. The last type may go beyond it.
    size_t work() const { return _work; }
    size_t mostWork() const;

private:
    enum Kind { Ordinary, Constructor, Destructor };

    // const and volatile that wait for what they qualify.
    class Qualifiers
    {
    public:
        void add(const char* word);
        bool isEmpty() const { return _count == 0; }
        void appendTo(string& text) const;

    private:
        const char* _words[2] = {};
        int _count = 0;
    };

    // What a type's modifiers make of it.
    struct Declarator
    {
        Qualifiers qualifiers; // of what the type is in the end
        string text;           // "*const *", and what stood there before
    };

    bool decodeSpecial(Cursor& in, const char* mark, string& name);
    bool munge_function_name(Cursor code, string& name);
    bool decodeMember(Cursor& in, Kind kind, const Cursor& prefix, string& name);
    bool decodeTemplate(Cursor& in, Cursor& plainName, string& whole);
    bool decodeValue(Cursor& in, string& text);
    bool decodeParameters(Cursor& in, bool isConst, string& name);

    bool do_args(Cursor& in, string& text, int depth);
    bool do_arg(Cursor& in, TypeVec& types, string& text, int depth);
    bool do_repeated_args(Cursor& in, TypeVec& types, string& text, int depth);
    bool do_type(Cursor& in, const TypeVec* types, const Qualifiers& qualifiers,
                 const string& declarator, string& text, int depth);
    bool do_modifiers(Cursor& in, const string& inner, Declarator& declarator);
    bool do_function_type(Cursor& in, const Declarator& declarator, string& text, int depth);
    bool do_remembered_type(Cursor& in, const TypeVec* types, const Declarator& declarator,
                            string& text, int depth);
    bool do_integer(Cursor& in, const char* sign, string& text);
    bool do_base(Cursor& in, string& text);
    bool do_class_name(Cursor& in, string& text);
    bool do_qualified_name(Cursor& in, string& name);
    static bool takeClassName(Cursor& in, Cursor& name);

    bool takeQualifier(Cursor& in, Qualifiers& qualifiers);
    bool fits(size_t length);

    const char* _begin;
    const char* _end;
    int _mode;
    size_t _longest; // characters of a text
    size_t _work;
};

} // namespace Demangle
