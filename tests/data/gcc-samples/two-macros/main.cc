#define LIMIT 20
#include "shared.h"

int checked(int n);

int main()
{
    return checked(-5) + doubled(3) + bounded(4) == 9 ? 0 : 1; //= run
}
