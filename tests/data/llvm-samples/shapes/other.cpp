#include "shapes.h"

static int half(int x)
{
    if (x < 0) {
        return 0;
    }
    return x * 2;
}

int otherUnit(int x)
{
    Shape shape(x);
    return half(x) + inEachUnit(7) + (shape.isRound() ? 1 : 2);
}
