// Built twice, as build systems do: for a static and for a shared library.
int common(int n)
{
    if (n > 10) {  //= run
        return 10; //= run
    }
    return n; //= run
}

int unused(int n)
{
    return n + 1; //= red
}
