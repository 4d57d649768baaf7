#include "tools/formats/ReportFile.h"

#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

size_t entries(const TempDir& dir)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(dir.path()), {}));
}

TEST(ReportFileTest, TakesItsNameAtTheEnd)
{
    const TempDir dir;
    dir.write("out", "old");
    ReportFile file;
    ASSERT_TRUE(file.open(dir.path("out").c_str())) << file.problem();
    file.stream() << "new";
    file.stream().flush();
    EXPECT_EQ(TempDir::read(dir.path("out")), "old");
    ASSERT_TRUE(file.close()) << file.problem();
    EXPECT_EQ(TempDir::read(dir.path("out")), "new");
    EXPECT_EQ(entries(dir), 1u);
}

TEST(ReportFileTest, WithoutItsEndNothingIsLeft)
{
    const TempDir dir;
    {
        ReportFile file;
        ASSERT_TRUE(file.open(dir.path("out").c_str()));
        file.stream() << "half";
    }
    EXPECT_EQ(entries(dir), 0u);
}

TEST(ReportFileTest, TakesMoreThanItGathers)
{
    const TempDir dir;
    const std::string piece(70001, 'x');
    ReportFile file;
    ASSERT_TRUE(file.open(dir.path("out").c_str()));
    file.stream() << piece << 'y' << piece;
    ASSERT_TRUE(file.close());
    EXPECT_EQ(TempDir::read(dir.path("out")), piece + "y" + piece);
}

TEST(ReportFileTest, ALinkStaysAndTheFileBehindItIsReplaced)
{
    const TempDir dir;
    dir.write("there/real", "old");
    fs::create_symlink("there/real", dir.path("link"));
    ReportFile file;
    ASSERT_TRUE(file.open(dir.path("link").c_str()));
    file.stream() << "new";
    ASSERT_TRUE(file.close());
    EXPECT_TRUE(fs::is_symlink(dir.path("link")));
    EXPECT_EQ(TempDir::read(dir.path("there/real")), "new");
}

TEST(ReportFileTest, ADeviceIsWrittenInto)
{
    ReportFile file;
    ASSERT_TRUE(file.open("/dev/null"));
    file.stream() << "gone";
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    ReportFile full;
    ASSERT_TRUE(full.open("/dev/full"));
    full.stream() << "lost";
    EXPECT_FALSE(full.close());
    EXPECT_EQ(full.problem(), "No space left on device");
}

TEST(ReportFileTest, MapsAndLogsAreNotWrittenOver)
{
    const TempDir dir;
    const std::string map = mapFile({{"a.c"}}).write(dir.path("p.map"));
    const std::string before = TempDir::read(map);
    ReportFile file;
    EXPECT_FALSE(file.open(map.c_str()));
    EXPECT_NE(file.problem().find("a map or a log"), std::string::npos);
    EXPECT_EQ(TempDir::read(map), before);
}

TEST(ReportFileTest, SaysWhyItCannotBegin)
{
    const TempDir dir;
    ReportFile none;
    EXPECT_FALSE(none.open(dir.path("no/such/folder").c_str()));
    EXPECT_EQ(none.problem(), "No such file or directory");
    ReportFile folder;
    EXPECT_FALSE(folder.open(dir.path().c_str()));
    EXPECT_EQ(folder.problem(), "Is a directory");
}

} // namespace
