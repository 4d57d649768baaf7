// SPDX-License-Identifier: MIT
#include "tools/import/lines/inputNames.h"

#include "tools/import/lines/InputStream.h"

std::string headOf(const std::string& path, size_t size)
{
    std::string ignored;
    return headOf(path, size, ignored);
}

std::string headOf(const std::string& path, size_t size, std::string& problem)
{
    std::string head(size, '\0');
    InputStream input;
    size_t got = 0;
    if (!input.open(path) || !input.read(&head[0], size, got)) {
        problem = input.problem();
        return std::string();
    }
    head.resize(got);
    return head;
}

std::string stemOf(const std::string& path)
{
    const std::string name = path.substr(0, path.find_last_not_of('/') + 1);
    std::string stem = name.substr(name.rfind('/') + 1);
    if (stem.size() > 3 && stem.compare(stem.size() - 3, 3, ".gz") == 0) {
        stem.resize(stem.size() - 3);
    }
    const size_t dot = stem.rfind('.');
    return dot == std::string::npos || dot == 0 ? stem : stem.substr(0, dot);
}
