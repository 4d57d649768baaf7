// SPDX-License-Identifier: MIT
//
// The viewer in use for a long time: seconds in a test, minutes by script/soak. What it holds in
// memory and in the server stays the same, apart from the dialogs of Load and Reports, of which it
// keeps each that was opened.
#include "tests/support/gtest_x.h"

#include "tests/program/Soak.h"
#include "tests/support/DataFiles.h"
#include "tests/support/Program.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <regex>
#include <string>
#include <unistd.h>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool KeepsFreedMemory = true;
#elif defined(__has_feature)
constexpr bool KeepsFreedMemory = __has_feature(address_sanitizer);
#else
constexpr bool KeepsFreedMemory = false;
#endif

constexpr int ShortRun = 5 * Soak::NActions;

class ZemSoakTest : public ::testing::Test
{
protected:
    static constexpr long KeptOfLoad = 36;    // KiB, with what the allocator adds
    static constexpr long KeptOfReports = 24; // likewise
    static constexpr long Spread = 768;       // KiB: the heap is never quite the same

    void SetUp() override
    {
        ASSERT_TRUE(_run.started()) << _run.server().problem();
        ASSERT_TRUE(_run.server().startWindowManager());
        std::vector<MapSource> sources;
        std::vector<LogSource> counts;
        for (int i = 0; i < 40; ++i) {
            const std::string path = _dir.write("part" + std::to_string(i) + ".cpp", text());
            const std::string name = "Part" + std::to_string(i) + "::run__FPCci";
            sources.push_back({path, {{name, 1, 9, {{2, 4}, {6, 8}}}}});
            counts.push_back({path, _dir.path("p.map"), {3, static_cast<uint32_t>(i % 2)}});
        }
        mapFile(sources).write(_dir.path("p.map"));
        logFile(counts).write(_dir.path("p.log"));
        // The Load dialog starts in the working directory.
        ASSERT_EQ(chdir(_dir.path().c_str()), 0);
        unsetenv("VORANDEL"); // the help texts are those of the build tree
        _run.start({"p.log"});
        ASSERT_NE(_run.mainWindow(), 0u);
    }

    void TearDown() override { ASSERT_EQ(chdir("/"), 0); }

    static std::string text()
    {
        std::string lines;
        for (int i = 1; i <= 60; ++i) {
            lines += "\tline " + std::to_string(i) + ";\n";
        }
        return lines;
    }

    // Until everything has been done twice, so that whatever is made once is there.
    void warmUp(Soak& soak)
    {
        ASSERT_TRUE(soak.act(Soak::Resize)) << soak.problem();
        for (int i = 0; i < 2 * Soak::NActions; ++i) {
            ASSERT_TRUE(soak.act(static_cast<Soak::Action>(i % Soak::NActions))) << soak.problem();
        }
    }

    // What one more action of this kind leaves behind in the server, for good.
    static std::map<std::string, long> keptOf(Soak& soak, Soak::Action action)
    {
        const Soak::Holding before = soak.holding();
        EXPECT_TRUE(soak.act(action)) << soak.problem();
        std::map<std::string, long> kept = soak.holding().resources;
        for (const auto& type : before.resources) {
            kept[type.first] -= type.second;
        }
        return kept;
    }

    // Does something at random until the time is over; in a short run each action as often.
    void use(Soak& soak, double minutes)
    {
        const auto start = std::chrono::steady_clock::now();
        double shown = 0;
        for (int n = 1;; ++n) {
            const bool isDone =
                minutes > 0 ? soak.act() : soak.act(static_cast<Soak::Action>(n % Soak::NActions));
            ASSERT_TRUE(isDone) << soak.problem() << _run.err();
            const double passed =
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            if (minutes == 0 ? n >= ShortRun : passed >= minutes * 60) {
                show(soak, n);
                break;
            }
            if (minutes > 0 && passed - shown >= 60) {
                shown = passed;
                show(soak, n);
            }
        }
    }

    static void show(Soak& soak, int nActions)
    {
        const Soak::Holding now = soak.holding();
        std::printf("%d actions, %ld Load, %ld Reports: %ld KiB, server:", nActions,
                    soak.done(Soak::Load), soak.done(Soak::ReportType), now.memory);
        for (const auto& type : now.resources) {
            std::printf(" %ld %s", type.second, type.first.c_str());
        }
        std::printf(", %lu KiB of pixmaps\n", now.pixmapBytes / 1024);
        std::fflush(stdout);
    }

    ViewerRun _run;
    TempDir _dir;
};

TEST_F(ZemSoakTest, ALongUseTakesNoMoreMemoryAndNoMoreOfTheServer)
{
    const char* wish = std::getenv("ZEM_SOAK_MINUTES");
    const double minutes = wish == nullptr ? 0 : std::atof(wish);
    Soak soak(_run, 1);
    warmUp(soak);
    std::map<std::string, long> ofLoad = keptOf(soak, Soak::Load);
    std::map<std::string, long> ofReports = keptOf(soak, Soak::ReportType);
    const Soak::Holding before = soak.holding();
    const long loads = soak.done(Soak::Load);
    const long reports = soak.done(Soak::ReportType);

    use(soak, minutes);

    const long moreLoads = soak.done(Soak::Load) - loads;
    const long moreReports = soak.done(Soak::ReportType) - reports;
    const Soak::Holding after = soak.holding();
    ASSERT_FALSE(after.resources.empty());
    for (const auto& type : after.resources) {
        const auto found = before.resources.find(type.first);
        const long held = found == before.resources.end() ? 0 : found->second;
        EXPECT_LE(type.second - held,
                  moreLoads * ofLoad[type.first] + moreReports * ofReports[type.first] + 2)
            << type.first;
    }
    if (!KeepsFreedMemory) {
        EXPECT_LE(after.memory - before.memory,
                  moreLoads * KeptOfLoad + moreReports * KeptOfReports + Spread);
    }
    // The logs that were not there; nothing else went wrong.
    static const std::regex failedLog(" [^\n]*Error processing [^\n]*/p.logx: fopen failed\n");
    EXPECT_EQ(std::regex_replace(_run.err(), failedLog, ""), "");
}

} // namespace
