#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Room
{
    bool needsX = false;
    std::string name;
    std::string folder;
    std::set<std::string> below;
};

// The rows of cmake/Layers.cmake, lower ones first.
std::vector<Room> roomTable()
{
    std::vector<Room> rooms;
    std::ifstream table(ZEM_BINARY_DIR "/rooms/table");
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        Room room;
        std::string half;
        words >> half >> room.name >> room.folder;
        room.needsX = half == "X";
        for (std::string word; words >> word;) {
            room.below.insert(word);
        }
        rooms.push_back(room);
    }
    return rooms;
}

std::vector<std::string> headersOf(const Room& room)
{
    std::vector<std::string> headers;
    for (const auto& entry :
         std::filesystem::directory_iterator(ZEM_SOURCE_DIR "/" + room.folder)) {
        const std::string type = entry.path().extension();
        if (type == ".h" || type == ".xpm") {
            headers.push_back(room.folder + "/" + entry.path().filename().string());
        }
    }
    return headers;
}

// Compiles `source` as a part of `room` would be, as far as includes go.
ProgramResult compileIn(const Room& room, const std::string& source)
{
    const TempDir files;
    return runProgram({ZEM_COMPILER, "-std=c++17", "-fsyntax-only",
                       "@" ZEM_BINARY_DIR "/rooms/" + room.name + ".path",
                       files.write("probe.cpp", source)});
}

// A room without sources has nothing to compile; one that needs X may be left out of this build.
bool isCompiled(const Room& room)
{
    return std::filesystem::exists(ZEM_BINARY_DIR "/rooms/" + room.name + ".path");
}

std::string complaint(const std::string& condition, const std::string& text)
{
    return "#if " + condition + "\n#error " + text + "\n#endif\n";
}

TEST(LayersTest, ARoomFindsItsOwnHeadersAndThoseOfItsRowAndNoOthers)
{
    const std::vector<Room> rooms = roomTable();
    size_t nCompiled = 0;
    for (const Room& room : rooms) {
        if (!isCompiled(room)) {
            continue;
        }
        ++nCompiled;
        std::string probe;
        for (const Room& other : rooms) {
            const bool isSeen = other.name == room.name || room.below.count(other.name) != 0;
            for (const std::string& header : headersOf(other)) {
                const std::string found = "__has_include(\"" + header + "\")";
                probe += isSeen ? complaint("!" + found, "cannot include " + header)
                                : complaint(found, "can include " + header);
            }
        }
        const ProgramResult result = compileIn(room, probe);
        EXPECT_EQ(result.status, 0) << room.name << ":\n" << result.err;
    }
    EXPECT_GE(nCompiled, 10u);
}

TEST(LayersTest, AnIncludeThatLooksUpDoesNotCompile)
{
    const std::vector<Room> rooms = roomTable();
    const auto data = std::find_if(rooms.begin(), rooms.end(),
                                   [](const Room& room) { return room.name == "zemData"; });
    ASSERT_NE(data, rooms.end());
    EXPECT_EQ(compileIn(*data, "#include \"zem/Data/ZEMRecord.h\"\n").status, 0);
    EXPECT_NE(compileIn(*data, "#include \"zem/Repository/ZEMRepository.h\"\n").status, 0);
    EXPECT_NE(compileIn(*data, "#include \"zem/Window/ZEMWindow.h\"\n").status, 0);
}

// What CMake says to one row more in the table; empty when it takes the row.
std::string complaintAboutRow(const std::string& row)
{
    const TempDir files;
    const std::string script =
        files.write("rows.cmake", "cmake_minimum_required(VERSION 3.25)\ninclude(" ZEM_SOURCE_DIR
                                  "/cmake/Layers.cmake)\n" +
                                      row + "\n");
    const ProgramResult result = runProgram({ZEM_CMAKE, "-P", script});
    return result.status == 0 ? "" : result.err;
}

TEST(LayersTest, ARowThatLooksUpStopsTheConfiguration)
{
    EXPECT_EQ(complaintAboutRow("zem_room(more zem/More zemApp)"), "");
    EXPECT_NE(
        complaintAboutRow("zem_room(more zem/More further)").find("more must not include further"),
        std::string::npos);
    EXPECT_NE(complaintAboutRow("zem_room(more zem/Data)").find("two rows"), std::string::npos);
    EXPECT_NE(complaintAboutRow("zem_room(zemData zem/More)").find("two rows"), std::string::npos);
}

// The first two words of each line of the diagram, top down, and the line between the halves.
std::vector<std::string> diagram()
{
    std::vector<std::string> lines;
    std::ifstream document(ZEM_SOURCE_DIR "/docs/ARCHITECTURE.md");
    bool isInside = false;
    for (std::string line; std::getline(document, line);) {
        if (line.rfind("```", 0) == 0) {
            if (isInside) {
                return lines;
            }
            isInside = true;
        } else if (isInside) {
            std::istringstream words(line);
            std::string folder;
            std::string name;
            words >> folder >> name;
            lines.push_back(folder.rfind("---", 0) == 0 ? "X above" : folder + " " + name);
        }
    }
    return lines;
}

TEST(LayersTest, TheDocumentDrawsTheTable)
{
    std::vector<std::string> expected;
    bool needsX = false;
    for (const Room& room : roomTable()) {
        if (room.needsX != needsX) {
            expected.emplace_back("X above");
            needsX = room.needsX;
        }
        expected.push_back(room.folder + " " + room.name);
    }
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(diagram(), expected);
}

} // namespace
