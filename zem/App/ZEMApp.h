// SPDX-License-Identifier: MIT
//
// The viewer as an application: its window, its command line, its log files.
#pragma once

#include "qip/Base/qipApplication.h"

class ZEMApp : public qipApplication
{
public:
    explicit ZEMApp(const char* name);
    ~ZEMApp() override;

    const char* className() const override;

    // Prints the usage text on the standard error stream.
    void usageHelp() override;

    // Builds and shows the main window, then handles the options, merges the log files named, shows
    // the report when there was one, and runs the event loop. Returns 0 if that ever ends.
    int appMain(int& argc, char** argv) override;
};

// The date that the usage text gives.
extern const char* const compilation_date;

// The release, as "3.1". Static storage.
const char* version_string();
