// Lambdas in const members, in constructors, in other lambdas and as template arguments.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace shop {

class Basket
{
public:
    Basket() : _scale([](int n) { return 2 * n; }(1)) {} //= run

    int total() const
    {
        const auto scaled = [this](int n) { //= run
            return n * _scale;              //= run
        };
        int sum = 0;                    //= run
        for (const int item : _items) { //= run
            sum += scaled(item);        //= run
        }
        return sum; //= run
    }

    int count(int least) const
    {
        return static_cast<int>(std::count_if(_items.begin(), _items.end(), [least](int n) {
            const auto isEnough = [least](int m) { return m >= least; }; //= run
            return isEnough(n);                                          //= run
        }));
    }

    std::vector<int>&& take() &&
    {
        return std::move(_items); //= run
    }

    const std::string& label(const std::string& none) const&
    {
        const auto choose = [&none]() -> const std::string& { //= red
            return none;                                      //= red
        };
        return choose(); //= red
    }

    std::vector<int> _items{3, 4};

private:
    int _scale;
};

} // namespace shop

int main()
{
    shop::Basket basket;                                              //= run
    const bool isGood = basket.total() == 14 && basket.count(4) == 1; //= run
    if (!isGood) {                                                    //= run
        return static_cast<int>(basket.label("none").size());         //= red
    }
    return std::move(basket).take().size() == 2 ? 0 : 1; //= run
}
