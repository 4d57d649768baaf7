#include "shapes.h"
#include <cstdio>
#include <cstdlib>

static int untouched(int a)
{
    if (a) {
        return 1;
    }
    return 0;
}

int main(int argc, char** argv)
{
    std::vector<int> values;
    const int n = argc > 1 ? std::atoi(argv[1]) : 5;
    for (int i = 0; i < n; ++i) values.push_back(larger(i, 2));
    int result = sumOf(values, "values") + clampTo(n, 1, 3);
    for (int i = 0; i < 5; ++i) { try { result += risky(i); if (i == 4) throw i; } catch (int) { --result; } }
    Shape a(1), b(2);
    if (b < a || !nameOf(n) || n > 1000) result += untouched(n) + neverCalled(n);
    std::printf("%d %s %s %s\n", result, nameOf(n), nameOf(1), nameOf(-4));
    if (n == 77) std::exit(3);
    return 0;
}
