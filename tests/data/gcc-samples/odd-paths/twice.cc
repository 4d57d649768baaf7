int twice(int n)
{
    if (n < 0) {  //= run
        return 0; //= red
    }
    return 2 * n; //= run
}
