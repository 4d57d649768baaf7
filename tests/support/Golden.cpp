// SPDX-License-Identifier: MIT
#include "tests/support/Golden.h"

#include "tests/support/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string firstDifference(const std::string& expected, const std::string& actual)
{
    std::istringstream left(expected);
    std::istringstream right(actual);
    for (int line = 1;; ++line) {
        std::string a;
        std::string b;
        const bool moreLeft = static_cast<bool>(std::getline(left, a));
        const bool moreRight = static_cast<bool>(std::getline(right, b));
        if (a != b || moreLeft != moreRight) {
            return "line " + std::to_string(line) + "\n  expected: " + (moreLeft ? a : "(end)") +
                   "\n    actual: " + (moreRight ? b : "(end)");
        }
        if (!moreLeft) {
            return "the last line's end";
        }
    }
}

} // namespace

testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual)
{
    const std::filesystem::path file =
        std::filesystem::path(ZEM_SOURCE_DIR) / "tests/golden" / name;
    const char* update = std::getenv("ZEM_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1") {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << actual;
        return testing::AssertionSuccess();
    }
    if (!std::filesystem::exists(file)) {
        return testing::AssertionFailure() << file << " is missing; ZEM_UPDATE_GOLDEN=1 writes it";
    }
    const std::string expected = TempDir::read(file.string());
    if (expected == actual) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "differs from " << file << " at " << firstDifference(expected, actual);
}
