// Cuts an expression into numbers, signs and brackets.
#pragma once

#include <string>

class Lexer
{
public:
    explicit Lexer(const std::string& text);

    // The sign at which the text stands, '0' for a number, 0 at its end.
    char sign() const { return _sign; }
    double number() const { return _number; }
    void next();

private:
    void skipBlanks();

    std::string _text;
    size_t _place = 0;
    char _sign = 0;
    double _number = 0;
};
