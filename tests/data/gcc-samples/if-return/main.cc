// Conditions with their consequence on the same line.
static int rank(int e)
{
    int base = 3;
    if (e > 5) return 1; //= part
    if (e > 4) { return 2; } else { base = 4; } //= part
    for (int i = 0; i < e; ++i) if (i == 9) return 9; //= part
    while (e > 3) e -= 1; //= part
    switch (e) { case 1: return base; case 2: return 8; default: break; } //= part
    return e == 0 ? base : e; //= part
}

int main()
{
    return rank(1) + rank(0) == 8 ? 0 : 1; //= run
}
