#include "half.h"

int half(int n)
{
    return n / 2;
}

int third(int n)
{
    return n / 3;
}
