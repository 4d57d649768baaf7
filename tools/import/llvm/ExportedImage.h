// SPDX-License-Identifier: MIT
//
// Functions that llvm-cov gave, as if they were read from a program: each gets a mapping of its own
// (CoverageFunction.h) in which each region with text has a counter, and its counts are those
// counters.
#pragma once

#include "tools/import/llvm/CoverageImage.h"
#include "tools/import/llvm/LlvmExport.h"
#include "tools/import/llvm/RawProfile.h"

#include <string>

class ExportedImage : public LlvmExport::Receiver
{
public:
    // What function() keeps: the functions for the first time, then only counts.
    explicit ExportedImage(CoverageImage* image) : _image(image) {}

    // The counts of all functions are those of one run. Returns false when the function makes no
    // sense.
    bool function(ExportedFunction& function) override;

    // The run as if it was read from a raw profile. Valid for the object's life.
    const ProfilePart& part();

private:
    CoverageImage* _image; // null: not wanted
    std::string _counters;
    ProfilePart _part;
};
