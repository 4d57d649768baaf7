#include "half.h"

int main()
{
    return half(4) == 2 ? 0 : 1;
}
