#include "half.h"

int main()
{
    return third(9) == 3 ? 0 : 1;
}
