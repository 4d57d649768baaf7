// SPDX-License-Identifier: MIT
#pragma once

// Whether an option such as "--help" stands anywhere among argv[1] to argv[argc - 1], in front of a
// word that ends the options ("--" or "-").
bool asksFor(const char* option, int argc, const char* const* argv);
