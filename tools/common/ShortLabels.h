// SPDX-License-Identifier: MIT
//
// Shortens the names of a build that are too long for the function report even without their
// argument lists, so that labels and bars can be seen side by side:
//
//   ns::f(...)::{lambda()#1}::operator()() const::Local::run   ->   ns::f(...)::...::Local::run
//   a_test_with_a_very_long_name_Test::TestBody   ->   a_test_wi...name_Test::TestBody
//
// The class report shows what stands before a name's last part. So a class is shortened for all of
// its functions or for none, and two classes, or two functions, that would look alike are numbered:
// "ns::...2::Local". The result depends on the set of names alone.
//
// Life cycle: add() any number of names, finish() once, then of(), from several threads.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

class ShortLabels
{
public:
    // In characters. The first canvas of a report has 100 columns. The bars start 11 columns and
    // twice the digits of the largest number of blocks behind the longest label, so this leaves 17
    // columns of them and their numbers in sight with 9,999 blocks.
    static constexpr size_t Widest = 64;
    // A class or namespace that is shortened has at most this many where that can be done. None
    // that has fewer is.
    static constexpr size_t WidestScope = 44;

    // Takes a name as the simple report shows it, if it is wider than that.
    void add(const std::string& label);
    void finish();

    bool isEmpty() const { return _labels.empty(); }
    // What is shown instead of the name `label`: often the same.
    std::string of(const std::string& label) const;

private:
    // Whole text > short one.
    using Texts = std::map<std::string, std::string>;

    static void shorten(Texts& texts, std::string (*shortened)(const std::string& text));

    std::set<std::string> _added;
    Texts _scopes; // what stands before the last "::"
    Texts _labels; // with the short scope
};
