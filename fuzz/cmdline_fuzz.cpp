// SPDX-License-Identifier: MIT
//
// Parses lines of the input as the words of a command line, twice, as the viewer does.
#include "fuzz/fuzzTarget.h"
#include "qip/Support/cmdln.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

size_t characters = 0;

// Touches what a handler may touch.
void take(char** args, const match& found)
{
    for (int i = 0; args != nullptr && i < found.option->nArgs && args[i] != nullptr; ++i) {
        characters += std::strlen(args[i]);
    }
}

const option table[] = {
    {"d", 1, take}, {"f", 2, take},     {"n", 1, take}, {"s", 1, take},        {"ct", 0, take},
    {"e", 0, take}, {"cover", 2, take}, {"", 0, take},  {nullptr, 0, nullptr},
};

const option nothing[] = {{nullptr, 0, nullptr}};

void check(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // With two plain words in front no terminator is alone, which would end the program.
    std::vector<std::string> words = {"zem", "log", ""};
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            words.emplace_back();
        } else if (data[i] != 0) {
            words.back() += static_cast<char>(data[i]);
        }
    }
    std::vector<char*> vector;
    for (std::string& word : words) {
        vector.push_back(word.data());
    }
    vector.push_back(nullptr);
    int count = static_cast<int>(words.size());

    for (const option* options : {nothing, table}) {
        const int before = count;
        cmdln_register(options);
        const int handled = cmdln_parse(&count, vector.data());
        check(handled >= 0 && count >= 2 && count + handled <= before);
        check(vector[static_cast<size_t>(count)] == nullptr);
        for (int i = 0; i < count; ++i) {
            characters += std::strlen(vector[static_cast<size_t>(i)]);
        }
    }
    return 0;
}
