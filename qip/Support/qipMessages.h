// SPDX-License-Identifier: MIT
//
// Messages that a damaged file may cause by the hundred thousand, on their way to the standard
// error stream. That stream is written at each piece of a line; this one keeps the text and writes
// it in large pieces, none of it lost. Whoever holds one flushes it before somebody else prints.
#pragma once

#include <ostream>
#include <streambuf>

class qipMessages : public std::ostream
{
public:
    qipMessages();
    // Writes what is left.
    ~qipMessages() override;
    qipMessages(const qipMessages&) = delete;
    qipMessages& operator=(const qipMessages&) = delete;

    // How often all of them together have written to the standard error stream.
    static long writes();

private:
    class Buffer : public std::streambuf
    {
    public:
        Buffer();
        ~Buffer() override;

    protected:
        int_type overflow(int_type c) override;
        int sync() override;

    private:
        void writeOut();

        char _waiting[8192];
    };

    Buffer _buffer;
};
