int common(int n);

int main(int argc, char**)
{
    return common(argc == 1 ? 20 : 5) > 0 ? 0 : 1; //= run
}
