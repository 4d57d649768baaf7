// SPDX-License-Identifier: MIT
#include "zem/Options/RptCommandLine.h"

#include "qip/Support/cmdln.h"
#include "zem/Options/RptOptions.h"

namespace {

// Whose options are being parsed: the command line's handlers are plain functions.
RptOptions* target = nullptr;

void setReportType(char** args, const match&)
{
    target->setReportType(args);
}

void setFilter(char** args, const match&)
{
    target->setFilter(args);
}

void setManglingLevel(char** args, const match&)
{
    target->setManglingLevel(args);
}

void sortBy(char** args, const match&)
{
    target->sortBy(args[0]);
}

void showHitCounts(char**, const match&)
{
    target->showHitCounts();
}

void slurp(char**, const match&) {}

// Of equal matches the earlier row wins.
const option optionTable[] = {
    {"d", 1, setReportType}, {"f", 2, setFilter},      {"n", 1, setManglingLevel},
    {"s", 1, sortBy},        {"ct", 0, showHitCounts}, {"e", 0, slurp},
    {"X", 0, slurp},         {nullptr, 0, nullptr}};

} // namespace

int RptCommandLine::parse(RptOptions& options, int* argc, char** argv)
{
    target = &options;
    cmdln_register(optionTable);
    const int handled = cmdln_parse(argc, argv);
    target = nullptr;
    return handled;
}
