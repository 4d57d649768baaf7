// SPDX-License-Identifier: MIT
//
// Expected texts that are too long for a test's source: tests/golden/<suite>/<case>.txt.
// With ZEM_UPDATE_GOLDEN=1 in the environment the files are written instead of compared; review the
// difference like code.
#pragma once

#include <gtest/gtest.h>

#include <string>

// Whether `actual` is what the file `name` ("suite/case.txt") holds; the failure names the first
// line that differs.
testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual);
