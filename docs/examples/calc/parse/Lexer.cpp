#include "Lexer.h"

#include <cctype>
#include <stdexcept>

Lexer::Lexer(const std::string& text) : _text(text)
{
    next();
}

void Lexer::skipBlanks()
{
    while (_place < _text.size() && _text[_place] == ' ') {
        ++_place;
    }
}

void Lexer::next()
{
    skipBlanks();
    if (_place == _text.size()) {
        _sign = 0;
        return;
    }
    const char c = _text[_place];
    if (std::isdigit(static_cast<unsigned char>(c))) {
        size_t length = 0;
        _number = std::stod(_text.substr(_place), &length);
        _place += length;
        _sign = '0';
        return;
    }
    if (std::string("+-*/()").find(c) == std::string::npos) {
        throw std::runtime_error(std::string("what is '") + c + "'?");
    }
    _sign = c;
    ++_place;
}
