namespace {
int helper(long n)
{
    return n > 5 ? 1 : 2; //= red
}
} // namespace

int second(int n)
{
    return n > 0 ? n : helper(5L); //= part
}
