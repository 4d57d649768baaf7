// One template, three instances with equal graphs: int runs one way, long the other, char never.
template <class T> T larger(T a, T b) //= run
{
    if (a > b) {  //= run
        return a; //= run
    }
    return b; //= run
}

template <class T> struct Box
{
    T get() const { return _value; } //= run
    T _value;
};

template <class T> T never(T a)
{
    return a; //= red
}

template char larger(char, char);
template struct Box<long>;
template int never(int);
template long never(long);

int main()
{
    Box<int> box{larger(3, 2)};                  //= run
    return box.get() == 3 ? larger(2L, 3L) - 3 : 1; //= part
}
