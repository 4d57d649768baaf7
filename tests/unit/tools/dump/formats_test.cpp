// The samples in docs/formats are what the writers make, byte for byte.

#include "qip/Support/qipVLRecFile.h"
#include "tests/support/TempDir.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

namespace {

// The bytes of the page's sample. Each line has its offset, up to 16 bytes, and what they are.
std::string sampleOf(const std::string& page)
{
    std::istringstream text(TempDir::read(std::string(ZEM_SOURCE_DIR) + "/docs/formats/" + page));
    std::string bytes;
    std::string line;
    while (std::getline(text, line) && line != "```hex") {
    }
    while (std::getline(text, line) && line != "```") {
        EXPECT_EQ(std::stoul(line.substr(0, 4), nullptr, 16), bytes.size()) << page << ": " << line;
        // Columns 6 to 52; what the bytes are stands behind them.
        std::istringstream columns(line.substr(6, 47));
        std::string byte;
        while (columns >> byte) {
            bytes += static_cast<char>(std::stoi(byte, nullptr, 16));
        }
    }
    return bytes;
}

class SampleFile : public qipVLRecFile
{
public:
    void dump(std::ostream&) override {}

protected:
    int writeHeader() override { return fwrite("USER HDR", 8, 1, _fp) == 1 ? 0 : WriteFailed; }
    int processRecord(unsigned int, unsigned int, unsigned int) override { return 0; }
};

CovFile sampleSource()
{
    CovFile file;
    file._path = "src/a.c";
    file._timeModified = 0x32700000;
    CovFunction main;
    main._storedName = "main__Fv";
    main._startLine = 3;
    main._endLine = 9;
    main._blocks = {{3, 5, 0}, {6, 9, 1}};
    CovFunction f;
    f._storedName = "f__Fi";
    f._startLine = 11;
    f._endLine = 13;
    f._blocks = {{11, 13, 2}};
    file._functions = {main, f};
    return file;
}

TEST(FormatPagesTest, ContainerSampleIsWhatTheContainerWrites)
{
    const TempDir dir;
    SampleFile file;
    ASSERT_EQ(file.open(dir.path("sample").c_str(), qipVLRecFile::WRITE, 8), 0);
    ASSERT_EQ(file.newRecord(7, "abc", 3), 0);
    ASSERT_EQ(file.newRecord(9, "hello", 5), 0);
    ASSERT_EQ(file.close(), 0);
    EXPECT_EQ(TempDir::read(dir.path("sample")), sampleOf("container.md"));
}

TEST(FormatPagesTest, MapSampleIsWhatTheMapWriterWrites)
{
    const TempDir dir;
    MapWriter writer;
    ASSERT_EQ(writer.create(dir.path("p.map").c_str()), 0);
    ASSERT_EQ(writer.add(sampleSource()), 0);
    ASSERT_EQ(writer.close(), 0);
    EXPECT_EQ(TempDir::read(dir.path("p.map")), sampleOf("map.md"));
}

TEST(FormatPagesTest, LogSampleIsWhatTheLogWriterWrites)
{
    const TempDir dir;
    LogWriter writer;
    ASSERT_EQ(writer.create(dir.path("p.log").c_str(), 0x32700100), 0);
    ASSERT_EQ(writer.add(sampleSource(), {1, 0, 500}, "p.map", false), 0);
    ASSERT_EQ(writer.close(), 0);
    EXPECT_EQ(TempDir::read(dir.path("p.log")), sampleOf("log.md"));
}

} // namespace
