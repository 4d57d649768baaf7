int first(int n);
int second(int n);

int main()
{
    return first(1) + second(1) == 3 ? 0 : 1; //= run
}
