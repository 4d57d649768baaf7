// One inline function that the units compile under different macros.
#ifndef LIMIT
#define LIMIT 10
#endif

inline int bounded(int n) //= run
{
#ifdef CHECKED
    if (n < 0) {   //= run
        return -1; //= run
    }
#endif
    return n > LIMIT ? LIMIT : n; //= run
}

static inline int doubled(int n) //= run
{
#ifdef CHECKED
    return bounded(2 * n); //= red
#else
    n += n;   //= run
    return n; //= run
#endif
}
