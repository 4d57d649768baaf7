#define LIMIT 20
#include "shared.h"

int checked(int n);

int main()
{
    return checked(-5) + doubled(3) == 5 ? 0 : 1; //= part
}
