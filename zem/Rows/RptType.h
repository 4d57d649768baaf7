// SPDX-License-Identifier: MIT
//
// The kind of a report: what one row stands for. A plain number, so that any value can be stored;
// whoever switches on it treats every other value as RptByFile.
#pragma once

using RptType = int;

constexpr RptType RptByDirectory = 0;
constexpr RptType RptByFile = 1; // the default
constexpr RptType RptByFunction = 2;
constexpr RptType RptByClass = 3;
