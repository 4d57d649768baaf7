// SPDX-License-Identifier: MIT
#include "tools/import/gcc/runGcov.h"

#include "tools/import/TemporaryFolder.h"
#include "tools/import/ToolRun.h"

namespace {

class Text : public ToolRun::Receiver
{
public:
    explicit Text(std::string& text) : _text(text) {}
    bool receive(const char* bytes, size_t size) override
    {
        _text.append(bytes, size);
        return true;
    }

private:
    std::string& _text;
};

} // namespace

bool runGcov(const char* gcov, const GccUnitFiles& files, std::string& json, std::string& problem)
{
    // Notes and counters stand side by side, which gcov asks for.
    const TemporaryFolder folder;
    if (folder.path().empty() || !folder.link(files._notes, "unit.gcno") ||
        (!files._counters.empty() && !folder.link(files._counters, "unit.gcda"))) {
        problem = folder.path().empty() ? folder.problem() : "no room for a temporary file";
        return false;
    }
    Text text(json);
    ToolRun tool;
    return tool.run({gcov, "--json-format", "--stdout", "unit.gcno"}, text, folder.path()) ==
           ToolRun::Ok;
}
