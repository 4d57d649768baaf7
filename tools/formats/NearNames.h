// SPDX-License-Identifier: MIT
//
// Finds out of many names those that somebody who typed another one may have meant: with other
// capitals, with more or less in front of it ("append" and "List::append", "a.c" and "src/a.c"), a
// part of it, or a few letters wrong. Takes time in proportion to the names and memory for few.
#pragma once

#include <string>
#include <vector>

class NearNames
{
public:
    // Borrows `wanted`.
    explicit NearNames(const char* wanted);

    // Looks at one name. May throw std::bad_alloc.
    void add(const char* name);

    // The names that come nearest, at most three, the nearest first.
    std::vector<std::string> nearest() const;

private:
    struct Candidate
    {
        int distance;
        std::string name;
    };

    const char* _wanted;
    std::vector<Candidate> _nearest;
};
