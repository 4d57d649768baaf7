int parse(const char* text);

#define COLOUR(name, value)                                                                        \
    int name()                                                                                     \
    {                                                                                              \
        return value;                                                                              \
    }
#include "colours.inc"

static int steps(int n)
{
    int total = 1; //= run
#include "steps.inc"
    return total; //= run
}

int main()
{
    return parse("5+3") == 8 && Red() + Blue() == 8 && steps(2) == 3 ? 0 : 1; //= part
}
