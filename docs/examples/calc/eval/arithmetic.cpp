#include "arithmetic.h"

#include <stdexcept>

double apply(char sign, double left, double right)
{
    switch (sign) {
    case '+':
        return left + right;
    case '-':
        return left - right;
    case '*':
        return left * right;
    default:
        if (right == 0) {
            throw std::runtime_error("division by zero");
        }
        return left / right;
    }
}

long applyWhole(char sign, long left, long right)
{
    if (sign == '/' && right == 0) {
        throw std::runtime_error("division by zero");
    }
    return static_cast<long>(apply(sign, static_cast<double>(left), static_cast<double>(right)));
}
