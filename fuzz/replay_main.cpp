// SPDX-License-Identifier: MIT
//
// Runs a fuzz target on kept inputs, where libFuzzer is not there: each argument is a file or a
// folder of files. Prints each name before it is run, so that the last one is the culprit.
#include "fuzz/fuzzTarget.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<std::string> filesOf(const char* argument)
{
    std::vector<std::string> names;
    if (std::filesystem::is_directory(argument)) {
        for (const auto& entry : std::filesystem::directory_iterator(argument)) {
            names.push_back(entry.path().string());
        }
        std::sort(names.begin(), names.end());
    } else {
        names.emplace_back(argument);
    }
    return names;
}

bool replay(const std::string& name)
{
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);
    std::ifstream in(name, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in),
                                  std::istreambuf_iterator<char>()};
    if (!in.is_open()) {
        return false;
    }
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::string& name : filesOf(argv[i])) {
            if (!replay(name)) {
                std::fprintf(stderr, "%s cannot be read\n", name.c_str());
                return 1;
            }
            ++count;
        }
    }
    if (count == 0) {
        std::fprintf(stderr, "no input\n");
        return 1;
    }
    return 0;
}
