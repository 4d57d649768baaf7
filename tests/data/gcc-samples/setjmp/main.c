/* A jump out of a function and back into another that has returned from setjmp before. */
#include <setjmp.h>

static jmp_buf place;

static void leave(int n)
{
    if (n > 0) {           //= run
        longjmp(place, n); //= run
    }
}

static int enter(int n)
{
    const int back = setjmp(place); //= run
    if (back == 0) {                //= run
        leave(n);                   //= run
        return 0;                   //= red
    }
    return back; //= run
}

int main(void)
{
    return enter(3) == 3 ? 0 : 1; //= run
}
