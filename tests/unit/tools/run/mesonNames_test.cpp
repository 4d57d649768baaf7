#include "tools/run/mesonNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string nameOf(const std::string& table, std::vector<std::string> words)
{
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return mesonName(table, pointers.data());
}

const char* const json = R"([{"name": "empty", "cmd": ["/b/prog", ""]},
    {"name": "odd", "cmd": "/b/odd"}, {"cmd": ["/b/nameless"]}, 7,
    {"name": "first", "cmd": ["/b/prog", "1"], "suite": ["p"]},
    {"name": "two words", "cmd": ["/b/prog", "2 \n"]}, {"name": "bare", "cmd": ["/b/prog"]},
    {"name": "again", "cmd": ["/b/prog", "1"]}])";

TEST(MesonNamesTest, ATestIsFoundByAllWordsOfItsCommand)
{
    const std::string table = mesonNames(json);
    EXPECT_EQ(nameOf(table, {"/b/prog", "1"}), "first");
    EXPECT_EQ(nameOf(table, {"/b/prog", "2 \n"}), "two words");
    EXPECT_EQ(nameOf(table, {"/b/prog"}), "bare");
    EXPECT_EQ(nameOf(table, {"/b/prog", "3"}), "");
    EXPECT_EQ(nameOf(table, {"first", "/b/prog", "1"}), "");
    EXPECT_EQ(nameOf(table, {"/b/prog", ""}), "");
    EXPECT_EQ(nameOf(table, {"/b/odd"}), "");
    EXPECT_EQ(nameOf(table, {"/b/nameless"}), "");
}

TEST(MesonNamesTest, DamageNamesNothing)
{
    EXPECT_EQ(mesonNames(""), "");
    EXPECT_EQ(mesonNames("ERROR: no build"), "");
    EXPECT_EQ(mesonNames("{}"), "");
    EXPECT_EQ(mesonNames("[]"), "");
    EXPECT_EQ(nameOf("", {"/b/prog"}), "");
    const std::string text = json;
    const std::string table = mesonNames(json);
    for (size_t length = 0; length < text.size(); ++length) {
        (void)mesonNames(text.substr(0, length));
    }
    for (size_t length = 0; length < table.size(); ++length) {
        (void)nameOf(table.substr(0, length), {"/b/prog"});
    }
}

} // namespace
