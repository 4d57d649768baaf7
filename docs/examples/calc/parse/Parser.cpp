#include "Parser.h"

#include "../eval/arithmetic.h"

#include <stdexcept>

double Parser::value()
{
    const double result = sum();
    if (_lexer.sign() != 0) {
        throw std::runtime_error("more than an expression");
    }
    return result;
}

double Parser::sum()
{
    double left = product();
    while (_lexer.sign() == '+' || _lexer.sign() == '-') {
        const char sign = _lexer.sign();
        _lexer.next();
        left = apply(sign, left, product());
    }
    return left;
}

double Parser::product()
{
    double left = factor();
    while (_lexer.sign() == '*' || _lexer.sign() == '/') {
        const char sign = _lexer.sign();
        _lexer.next();
        left = apply(sign, left, factor());
    }
    return left;
}

double Parser::factor()
{
    if (_lexer.sign() == '-') {
        _lexer.next();
        return -factor();
    }
    if (_lexer.sign() == '(') {
        _lexer.next();
        const double inner = sum();
        if (_lexer.sign() != ')') {
            throw std::runtime_error("a bracket is open");
        }
        _lexer.next();
        return inner;
    }
    if (_lexer.sign() != '0') {
        throw std::runtime_error("a number is missing");
    }
    const double number = _lexer.number();
    _lexer.next();
    return number;
}
