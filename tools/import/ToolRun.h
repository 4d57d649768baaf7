// SPDX-License-Identifier: MIT
//
// Runs another program, without a shell, gives what it prints to a receiver piece by piece, and
// keeps the beginning of what it complains about. A signal that ends this program ends that one
// before (CleanEnd.h).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class ToolRun
{
public:
    class Receiver
    {
    public:
        virtual ~Receiver() = default;
        // Takes the next bytes of the standard output. Returns false when no more are wanted, which
        // ends the program.
        virtual bool receive(const char* bytes, size_t size) = 0;
    };

    enum Result { Ok, NotFound, Failed };

    // Runs `words[0]`, found as the shell does from the current folder, with the others as
    // arguments, in `folder` or, when that is empty, in the current one, and waits for its end.
    // Failed: it ended with another status than 0, or the receiver wanted no more.
    Result run(const std::vector<std::string>& words, Receiver& receiver,
               const std::string& folder = std::string());

    // The last line of its complaints; empty when there is none.
    const std::string& complaint() const { return _complaint; }

private:
    std::string _complaint;
};
