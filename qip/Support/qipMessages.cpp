// SPDX-License-Identifier: MIT
#include "qip/Support/qipMessages.h"

#include <iostream>

namespace {

long nWrites = 0;

} // namespace

qipMessages::Buffer::Buffer()
{
    setp(_waiting, _waiting + sizeof _waiting);
}

qipMessages::Buffer::~Buffer()
{
    writeOut();
}

void qipMessages::Buffer::writeOut()
{
    if (pptr() != pbase()) {
        ++nWrites;
        std::cerr.write(pbase(), pptr() - pbase());
        setp(_waiting, _waiting + sizeof _waiting);
    }
}

qipMessages::Buffer::int_type qipMessages::Buffer::overflow(int_type c)
{
    writeOut();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        sputc(traits_type::to_char_type(c)); // there is room now
    }
    return traits_type::not_eof(c);
}

int qipMessages::Buffer::sync()
{
    writeOut();
    return 0;
}

qipMessages::qipMessages() : std::ostream(nullptr)
{
    rdbuf(&_buffer);
}

qipMessages::~qipMessages() = default;

long qipMessages::writes()
{
    return nWrites;
}
