// Finds what an expression is worth: products before sums, brackets first.
#pragma once

#include "Lexer.h"

class Parser
{
public:
    explicit Parser(const std::string& text) : _lexer(text) {}

    double value();

private:
    double sum();
    double product();
    double factor();

    Lexer _lexer;
};
