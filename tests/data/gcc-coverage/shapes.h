// Included by both units: the linker keeps one copy of each of these.
#pragma once
#include <stdexcept>
#include <string>
#include <vector>

template<class T> T larger(T a, T b)
{
    if (a > b)
        return a;
    return b;
}

inline int clampTo(int value, int low, int high)
{
    if (value < low) { return low; } else if (value > high) { return high; }
    return value;
}

inline int neverCalled(int value)
{
    return value * 2;
}

struct Shape {
    explicit Shape(int size) : _size(size) {}
    virtual ~Shape() {}
    virtual int area() const { return _size; }
    bool operator<(const Shape& other) const { return _size < other._size; }
    int _size;
};

int sumOf(const std::vector<int>& values, const std::string& name);
int risky(int value);
const char* nameOf(int kind);
