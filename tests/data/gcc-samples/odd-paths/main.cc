// In folders with blanks, quotes and letters outside of ASCII.
int twice(int n);

int main()
{
    return twice(2) == 4 ? 0 : 1; //= run
}
