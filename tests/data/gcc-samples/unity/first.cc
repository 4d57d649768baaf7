static int helper(int n)
{
    return n + 1; //= run
}

int first(int n)
{
    return helper(n); //= run
}
