// SPDX-License-Identifier: MIT
#include "tools/formats/Percent.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ostream>

namespace {

constexpr int Decimals = 4;
constexpr int64_t Unit = 10000;       // of one per cent
constexpr int64_t Whole = 100 * Unit; // of everything
constexpr int64_t HundredthsOfAll = 100 * 100;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// `covered` of `total` in parts of which `all` are everything, cut. Fits for as many blocks as
// there can be in memory. More than everything, or less than nothing, is what a damaged map says.
int64_t share(int64_t covered, int64_t total, int64_t all)
{
    return total <= 0 ? 0 : std::clamp<int64_t>(covered, 0, total) * all / total;
}

void writeFraction(std::ostream& out, int64_t share, int64_t unit, int decimals)
{
    char text[32];
    const int size =
        std::snprintf(text, sizeof text, "%lld.%0*lld", static_cast<long long>(share / unit),
                      decimals, static_cast<long long>(share % unit));
    out.write(text, size);
}

} // namespace

Percent::Percent() : _tenThousandths(0) {}

bool Percent::parse(const char* text)
{
    int64_t value = 0;
    int digits = 0;
    for (; isDigit(*text); ++text, ++digits) {
        value = std::min<int64_t>(value * 10 + (*text - '0'), Whole);
    }
    int decimals = 0;
    if (*text == '.') {
        for (++text; isDigit(*text) && decimals < Decimals; ++text, ++decimals) {
            value = value * 10 + (*text - '0');
        }
        digits += decimals;
    }
    text += *text == '%' ? 1 : 0;
    for (; decimals < Decimals; ++decimals) {
        value *= 10;
    }
    if (digits == 0 || *text != '\0' || value > Whole) {
        return false;
    }
    _tenThousandths = value;
    return true;
}

bool Percent::isAbove(int64_t covered, int64_t total) const
{
    return covered * Whole < _tenThousandths * total;
}

std::string Percent::text() const
{
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%04lld", static_cast<long long>(_tenThousandths / Unit),
                  static_cast<long long>(_tenThousandths % Unit));
    size_t length = std::strlen(text);
    while (text[length - 1] == '0') {
        --length;
    }
    length -= text[length - 1] == '.' ? 1 : 0;
    return std::string(text, length);
}

void Percent::write(std::ostream& out, int64_t covered, int64_t total)
{
    writeFraction(out, share(covered, total, HundredthsOfAll), 100, 2);
}

void Percent::writeRate(std::ostream& out, int64_t covered, int64_t total)
{
    writeFraction(out, share(covered, total, Unit), Unit, Decimals);
}
