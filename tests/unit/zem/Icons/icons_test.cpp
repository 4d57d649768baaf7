#include "zem/Icons/browse.xpm"
#include "zem/Icons/close.xpm"
#include "zem/Icons/exit.xpm"
#include "zem/Icons/help.xpm"
#include "zem/Icons/load.xpm"
#include "zem/Icons/report.xpm"
#include "zem/Icons/sort.xpm"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <string>

namespace {

struct Icon
{
    const char* name;
    const char* const* data;
    size_t nLines;
    int width;
    int height;
    int nColors;
    int charsPerPixel;
};

const Icon icons[] = {
    {"load", load_xpm, std::size(load_xpm), 32, 32, 10, 2},
    {"browse", browse_xpm, std::size(browse_xpm), 32, 32, 8, 1},
    {"report", report_xpm, std::size(report_xpm), 32, 32, 8, 1},
    {"sort", sort_xpm, std::size(sort_xpm), 32, 32, 9, 1},
    {"exit", exit_xpm, std::size(exit_xpm), 32, 32, 3, 1},
    {"close", close_xpm, std::size(close_xpm), 40, 48, 3, 1},
    {"help", help_xpm, std::size(help_xpm), 40, 48, 4, 1},
};

// The colours of an icon by their characters, each with its values by visual ("c", "m", "g", "s").
using Colors = std::map<std::string, std::map<std::string, std::string>>;

Colors colorsOf(const Icon& icon)
{
    Colors colors;
    for (int i = 1; i <= icon.nColors; ++i) {
        const std::string line = icon.data[i];
        std::istringstream words(line.substr(static_cast<size_t>(icon.charsPerPixel)));
        std::string key;
        std::string value;
        auto& color = colors[line.substr(0, static_cast<size_t>(icon.charsPerPixel))];
        while (words >> key >> value) {
            color[key] = value;
        }
    }
    return colors;
}

int count(const Icon& icon, const std::string& key, const std::string& value)
{
    int n = 0;
    for (const auto& color : colorsOf(icon)) {
        const auto found = color.second.find(key);
        n += found != color.second.end() && found->second == value;
    }
    return n;
}

void PrintTo(const Icon& icon, std::ostream* out)
{
    *out << icon.name;
}

class IconsTest : public ::testing::TestWithParam<Icon>
{};

TEST_P(IconsTest, HeaderSaysSizeColoursAndCharacters)
{
    const Icon& icon = GetParam();
    int width = 0;
    int height = 0;
    int nColors = 0;
    int charsPerPixel = 0;
    ASSERT_EQ(std::sscanf(icon.data[0], "%d %d %d %d", &width, &height, &nColors, &charsPerPixel),
              4);
    EXPECT_EQ(width, icon.width);
    EXPECT_EQ(height, icon.height);
    EXPECT_EQ(nColors, icon.nColors);
    EXPECT_EQ(charsPerPixel, icon.charsPerPixel);
    EXPECT_EQ(icon.nLines, static_cast<size_t>(1 + nColors + height));
}

TEST_P(IconsTest, EveryPixelHasAColourAndEveryColourAPixel)
{
    const Icon& icon = GetParam();
    const Colors colors = colorsOf(icon);
    ASSERT_EQ(colors.size(), static_cast<size_t>(icon.nColors));
    std::set<std::string> used;
    for (int y = 0; y < icon.height; ++y) {
        const std::string row = icon.data[1 + icon.nColors + y];
        ASSERT_EQ(row.size(), static_cast<size_t>(icon.width * icon.charsPerPixel)) << "row " << y;
        for (int x = 0; x < icon.width; ++x) {
            used.insert(row.substr(static_cast<size_t>(x * icon.charsPerPixel),
                                   static_cast<size_t>(icon.charsPerPixel)));
        }
    }
    for (const std::string& pixel : used) {
        EXPECT_EQ(colors.count(pixel), 1u) << "'" << pixel << "'";
    }
    EXPECT_EQ(used.size(), colors.size());
}

TEST_P(IconsTest, ColoursHaveMonochromeFallbacksAndOneIsTheBackground)
{
    const Icon& icon = GetParam();
    for (const auto& color : colorsOf(icon)) {
        EXPECT_EQ(color.second.count("m"), 1u) << "'" << color.first << "'";
        EXPECT_EQ(color.second.count("c"), 1u) << "'" << color.first << "'";
    }
    EXPECT_EQ(count(icon, "s", "background"), 1);
}

INSTANTIATE_TEST_SUITE_P(All, IconsTest, ::testing::ValuesIn(icons),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(NamedColoursTest, TransparentIconsHaveOneColourNone)
{
    EXPECT_EQ(count(icons[1], "c", "None"), 1);
    EXPECT_EQ(count(icons[2], "c", "None"), 1);
}

TEST(NamedColoursTest, CloseAndHelpHaveTheirNamedColours)
{
    EXPECT_EQ(count(icons[5], "c", "White"), 1);
    EXPECT_EQ(count(icons[5], "c", "Black"), 1);
    EXPECT_EQ(count(icons[5], "c", "Red"), 1);
    EXPECT_EQ(count(icons[5], "g", "Gray75"), 1);
    EXPECT_EQ(count(icons[6], "c", "White"), 1);
    EXPECT_EQ(count(icons[6], "c", "Black"), 1);
    EXPECT_EQ(count(icons[6], "c", "Blue"), 2);
    EXPECT_EQ(count(icons[6], "g", "Gray75"), 2);
}

} // namespace
