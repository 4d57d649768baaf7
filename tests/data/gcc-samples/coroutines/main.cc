// The compiler splits a coroutine into functions of its own making, which have the lines.
#include <coroutine>

struct Counter
{
    struct promise_type
    {
        int value = 0;
        Counter get_return_object() //= run
        {
            return {std::coroutine_handle<promise_type>::from_promise(*this)}; //= run
        }
        std::suspend_always initial_suspend() { return {}; }           //= run
        std::suspend_always final_suspend() noexcept { return {}; }    //= run
        std::suspend_always yield_value(int n) //= run
        {
            value = n; //= run
            return {}; //= run
        }
        void return_void() {}         //= run
        void unhandled_exception() {}
    };
    std::coroutine_handle<promise_type> handle;
};

Counter upTo(int n)
{
    for (int i = 1; i <= n; ++i) { //= run
        if (i == 100) {            //= run
            n = 0;                 //= red
        }
        co_yield i; //= run
    }
}

int main()
{
    Counter counter = upTo(3); //= run
    int sum = 0;               //= run
    for (;;) {
        counter.handle.resume();     //= run
        if (counter.handle.done()) { //= run
            break;                   //= run
        }
        sum += counter.handle.promise().value; //= run
    }
    counter.handle.destroy(); //= run
    return sum == 6 ? 0 : 1;  //= run
}
