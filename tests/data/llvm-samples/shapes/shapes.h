// Included by both units: templates, inline functions that one unit or none uses, a macro with
// decisions of its own.
#pragma once

#include <stdexcept>
#include <string>

#define LARGER(a, b) ((a) > (b) ? (a) : (b))
#define CLAMPED(x, low, high) \
    (LARGER(low, x) > (high) ? (high) \
                             : LARGER(low, x))

template <class T> T sumOf(const T* values, int count)
{
    T sum = T();
    for (int i = 0; i < count; ++i) {
        if (values[i] < T()) {
            continue;
        }
        sum += values[i];
    }
    return sum;
}

inline int neverCalled(int x)
{
    if (x > 3) {
        return 1;
    }
    return 2;
}

inline int calledByOne(int x)
{
    return x > 3 ? x : -x;
}

static int inEachUnit(int x)
{
    if (x == 7)
        return 8;

    // A remark between.
    return x;
}

class Shape
{
public:
    explicit Shape(int sides) : _sides(sides) {}
    virtual ~Shape() {}
    virtual int area() const { return 0; }
    int sides() const { return _sides; }
    bool isRound() const { return _sides == 0; }

private:
    int _sides;
    int _colour = CLAMPED(5, 1, 3);
};

int libraryWork(int x);
int otherUnit(int x);
