// Small functions that an optimising compiler puts into their callers. The helpers stand before,
// between and behind the functions that use them.
static inline int square(int n)
{
    return n * n; //= run
}

static inline int clamped(int n, int most)
{
    if (n > most) {  //= run
        return most; //= run
    }
    return n; //= run
}

__attribute__((noinline)) int area(int a, int b)
{
    int sum = 0;                 //= run
    for (int i = 0; i < a; ++i) {
        sum += clamped(square(b) + i, 30); //= run
    }
    if (sum > 1000) { //= run
        sum = square(sum); //= red
        sum -= 1;          //= red
    }
    return sum; //= run
}

static inline int never(int n)
{
    int result = n; //= red
    while (result > 3) {
        result /= 2; //= red
    }
    return result; //= red
}

__attribute__((noinline)) int choose(int n)
{
    if (n > 5) return 1; //= run
    if (n > 4) {              //= run
        return never(n) + 7;  //= red
    }
    return square(n); //= run
}

int main(int argc, char**)
{
    return area(7, 5 * argc) + choose(7 * argc) + choose(2 * argc) > 0 ? 0 : 1; //= run
}
