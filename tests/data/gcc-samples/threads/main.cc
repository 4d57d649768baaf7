// Four threads count in the same blocks; with atomic counters no run is lost.
#include <atomic>
#include <thread>
#include <vector>

static std::atomic<int> total{0};

static void work(int turns)
{
    for (int i = 0; i < turns; ++i) {
        total += 1; //= 4000
    }
    if (turns == 0) { //= run
        total = 0;    //= red
    }
}

int main()
{
    std::vector<std::thread> threads; //= run
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work, 1000); //= run
    }
    for (std::thread& thread : threads) {
        thread.join(); //= run
    }
    return total == 4000 ? 0 : 1; //= run
}
