#define CHECKED
#include "shared.h"

int checked(int n)
{
    return n > 100 ? doubled(n) : bounded(n); //= part
}
