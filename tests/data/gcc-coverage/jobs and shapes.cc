#include "shapes.h"

namespace {
int counted() { static int calls = 0; return ++calls; }
int atStart = counted() + larger(3, 4);
}

namespace jobs {
struct Square : Shape {
    explicit Square(int side) : Shape(side * side) {}
    ~Square() override { counted(); }
    int area() const override { return clampTo(_size, 0, 50); }
};
int total(int n)
{
    int sum = 0;
    for (int i = 0; i < n; ++i) {
        for (int j = i; j--; ) sum += j & 1 ? 1 : 2;
        if (i % 3 == 0)
            continue;
        while (sum > 100) { sum -= 10; }
    }
    do { ++sum; } while (sum % 7);
    Square square(n);
    return sum + square.area() + larger<long>(n, 2);
}
}

int sumOf(const std::vector<int>& values, const std::string& name)
{
    int sum = static_cast<int>(name.size());
    for (int value : values)
        sum += value;
    auto twice = [&sum](int by) {
        if (by == 0)
            return 0;
        return sum * by;
    };
    return twice(2) + jobs::total(9) + atStart;
}

int risky(int value)
{
    try {
        if (value > 2)
            throw std::runtime_error("too large");
        return value;
    } catch (const std::runtime_error& problem) {
        return static_cast<int>(std::string(problem.what()).size());
    }
}

const char* nameOf(int kind)
{
    switch (kind) {
    case 0: return "none";
    case 1:
    case 2: return "few";
    default:
        break;
    }
    return kind < 0 ? "negative" : kind > 100 ? "very many" : "many";
}
