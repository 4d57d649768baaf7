#include "shapes.h"

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#define MAKE_TEST(name, value) \
    static int name(int x) \
    { \
        if (x > (value)) \
            return 1; \
        return 0; \
    }

MAKE_TEST(isLarge, 10)
MAKE_TEST(isHuge, 1000)

static int half(int x)
{
    return x / 2;
}

namespace {

class Square : public Shape
{
public:
    explicit Square(int width) : Shape(4), _width(width) {}
    int area() const override { return _width * _width; }

private:
    int _width;
};

int colour(int kind)
{
    switch (kind) {
    case 0:
        return 1;
    case 1:
    case 2: {
        int value = kind;
        value += 3;
        return value;
    }
    default:
        break;
    }
    return 9;
}

int parse(const std::string& text)
{
    try {
        if (text.empty()) {
            throw std::runtime_error("empty");
        }
        return std::stoi(text);
    } catch (const std::invalid_argument&) {
        return -1;
    } catch (const std::exception&) {
        return -2;
    }
}

int loops(int n)
{
    int sum = 0;
    for (int i = 0; i < n; ++i)
        sum += i;
    while (sum > 100) {
        sum -= 10;
        if (sum == 105) break;
    }
    do {
        ++sum;
    } while (sum % 4 != 0 && sum < 50);
    return sum > 10 || n == 77 ? sum : 0;
}

int lambdas(const std::vector<int>& values)
{
    int count = 0;
    auto add = [&count](int x) {
        if (x > 2) {
            count += x;
        }
    };
    const auto never = [&count] {
        count = 0;
    };
    for (const int value : values) {
        add(value);
    }
    if (count < 0) {
        never();
    }
    return count;
}

int table(int index)
{
    static const int numbers[] = {
#include "numbers.inc"
    };
    if (index > 3) goto end;
#include "steps.inc"
    return numbers[index];
end:
    return 0;
}

#if 0
int skipped()
{
    return 1;
}
#endif

int withSkipped(int x)
{
#ifdef NOT_DEFINED
    x += 1;
#else
    x += 2;
#endif
    return x;
}

int forked(int x)
{
    const pid_t child = fork();
    if (child == 0) {
        std::exit(x > 3 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    const int values[] = {1, -2, 3};
    const double numbers[] = {1.5, 2.5};
    int sum = sumOf(values, 3) + static_cast<int>(sumOf(numbers, 2));
    sum += colour(argc) + parse(argc > 1 ? argv[1] : "12") + parse("x") + loops(20);
    sum += lambdas({1, 2, 3}) + table(argc) + withSkipped(1) + half(8);
    sum += isLarge(11) + isHuge(11) + inEachUnit(1) + otherUnit(argc) + libraryWork(argc);
    sum += CLAMPED(sum, 3, 1000000) + Square(3).area() + calledByOne(argc);
    if (argc > 2) {
        sum += parse("") + forked(argc);
    }
    return sum == 0;
}
