#include "shapes.h"

int libraryWork(int x)
{
    const long values[] = {x, 2, 3};
    return static_cast<int>(sumOf(values, 3)) + calledByOne(x) + inEachUnit(2);
}

int libraryNever(int x)
{
    return LARGER(x, 3);
}
