// Several functions and lambdas on one line.
int one() { return 1; } int two() { return 2; } //= part

#define PAIR(name) int name##First(int n) { return n; } int name##Second(int n) { return n + 1; }
PAIR(used) //= run
PAIR(unused) //= red

int apply(int n)
{
    const auto add = [](int a) { return a + 1; }; const auto take = [](int a) { return a - 1; }; //= part
    return n > 0 ? add(n) : [&] { return take(n); }(); //= part
}

template <class F> int call(F f) { return f(); } //= run

int main()
{
    return call([] { return one(); }) + apply(1) + call([] { return usedFirst(usedSecond(0)); }) == 4 ? 0 : 1; //= run
}
