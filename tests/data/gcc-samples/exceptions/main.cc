// Throwing, catching, rethrowing, and the clean-ups on the way.
#include <stdexcept>
#include <string>

namespace {

int alive = 0;

struct Guard
{
    Guard() { ++alive; }  //= run
    ~Guard() { --alive; } //= run
};

int checked(int n)
{
    Guard outer;     //= run
    if (n < 0) {     //= run
        Guard inner; //= run
        throw std::invalid_argument("below " + std::to_string(n)); //= run
    }
    return n; //= run
}

int passedOn(int n)
{
    try {
        return checked(n); //= run
    } catch (const std::invalid_argument&) { //= run
        Guard again; //= run
        throw;       //= run
    } catch (const std::bad_alloc&) { //= run
        return -2;                    //= red
    }
}

int quiet(int n) noexcept
{
    try {
        return passedOn(n); //= run
    } catch (const std::exception& problem) { //= run
        return std::string(problem.what()).empty() ? 1 : -1; //= part
    } catch (...) {                                          //= run
        return -3;                                           //= red
    }
}

} // namespace

int main()
{
    return quiet(3) == 3 && quiet(-1) == -1 && alive == 0 ? 0 : 1; //= part
}
