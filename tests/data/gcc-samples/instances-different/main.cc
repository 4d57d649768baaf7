// The instances have different graphs: each covers lines that the others do not have.
#include <cstddef>
#include <string>

template <class T> std::size_t lengthOf(const T& value) //= run
{
    if constexpr (sizeof(T) == 1) {
        return 1; //= run
    } else if constexpr (sizeof(T) == sizeof(int)) {
        if (value < 0) { //= run
            return 0;    //= run
        }
        return static_cast<std::size_t>(value); //= red
    } else {
        return value.size(); //= run
    }
}

template <class... Ts> int count(const Ts&... values) //= run
{
    int n = 0;                                        //= run
    ((n += lengthOf(values) > 0 ? 1 : 0), ...);       //= run
    return n;                                         //= run
}

int main()
{
    return count('a', -1) + count(std::string("ab")) == 2 ? 0 : 1; //= part
}
