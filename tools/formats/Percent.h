// SPDX-License-Identifier: MIT
//
// How much of something ran, exactly: what is printed is cut behind its last digit, never rounded
// up, and a limit is compared in whole numbers. 79.996 of 100 prints as 79.99 and is under 80.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

class Percent
{
public:
    // 0.
    Percent();

    // Takes a number from 0 to 100 with at most four decimals, such as "80" and "79.5"; a '%' may
    // follow. False for anything else.
    bool parse(const char* text);

    // Whether `covered` of `total` is less than this. Nothing of nothing is not: there is nothing
    // that could be covered.
    bool isAbove(int64_t covered, int64_t total) const;

    // Without zeros at the end: "80", "79.5".
    std::string text() const;

    // Writes `covered` of `total` in per cent with two decimals, "66.66"; "0.00" of nothing.
    static void write(std::ostream& out, int64_t covered, int64_t total);

    // Writes it as a part of one with four decimals, "0.6666".
    static void writeRate(std::ostream& out, int64_t covered, int64_t total);

private:
    int64_t _tenThousandths; // of one per cent
};
