#include "tools/run/RunRequest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class RunRequestTest : public ::testing::Test
{
protected:
    std::string read(const std::vector<std::string>& words)
    {
        _words = words;
        _pointers.clear();
        for (std::string& word : _words) {
            _pointers.push_back(word.data());
        }
        _pointers.push_back(nullptr);
        _request = RunRequest();
        return _request.read(_pointers.data());
    }

    std::string command() const
    {
        std::string text;
        for (char** word = _request._command; *word != nullptr; ++word) {
            text += std::string(*word) + ";";
        }
        return text;
    }

    std::vector<std::string> _words;
    std::vector<char*> _pointers;
    RunRequest _request;
};

using Words = std::vector<std::string>;

TEST_F(RunRequestTest, TheCommandNeedsNothingBeforeIt)
{
    EXPECT_EQ(read({"./a.out", "--each", "-o", "x"}), "");
    EXPECT_EQ(command(), "./a.out;--each;-o;x;");
    EXPECT_EQ(_request._name, "a.out");
    EXPECT_EQ(_request._folder, "coverage");
    EXPECT_FALSE(_request._isEach);
}

TEST_F(RunRequestTest, TakesItsOptions)
{
    EXPECT_EQ(
        read({"--build", "b", "-o", "cov", "--name", "night", "--view", "--each", "--", "-x"}), "");
    EXPECT_EQ(_request._build, "b");
    EXPECT_EQ(_request._folder, "cov");
    EXPECT_EQ(_request._name, "night");
    EXPECT_TRUE(_request._isViewed);
    EXPECT_TRUE(_request._isEach);
    EXPECT_EQ(command(), "-x;");
}

TEST_F(RunRequestTest, SeveralBinariesGoUpToTheNextOption)
{
    EXPECT_EQ(read({"--binary", "a", "b", "--view", "--binary", "c", "--", "d"}), "");
    EXPECT_EQ(_request._binaries, (Words{"a", "b", "c"}));
    EXPECT_EQ(command(), "d;");
    EXPECT_NE(read({"--binary", "--", "d"}), "");
}

TEST_F(RunRequestTest, PassesOnWhatTheImportTakes)
{
    EXPECT_EQ(read({"--only", "src", "--relative", "--exclude", "*/t/*", "make", "check"}), "");
    EXPECT_EQ(_request._importWords, (Words{"--only", "src", "--relative", "--exclude", "*/t/*"}));
    EXPECT_EQ(command(), "make;check;");
}

TEST_F(RunRequestTest, HelpAndVersionMayStandAnywhereAmongTheOptions)
{
    EXPECT_EQ(read({"--each", "--help", "--nonsense"}), "");
    EXPECT_EQ(_request._wanted, RunRequest::Help);
    EXPECT_EQ(read({"--name", "a", "--version"}), "");
    EXPECT_EQ(_request._wanted, RunRequest::Version);
    EXPECT_EQ(read({"--name", "--help", "make", "--version"}), "");
    EXPECT_EQ(_request._wanted, RunRequest::Run);
    EXPECT_EQ(_request._name, "--help");
    EXPECT_EQ(read({"--", "--help"}), "");
    EXPECT_EQ(_request._wanted, RunRequest::Run);
}

TEST_F(RunRequestTest, SaysWhatIsWrong)
{
    EXPECT_EQ(read({}), "the command to run is missing");
    EXPECT_EQ(read({"--view", "--"}), "the command to run is missing");
    EXPECT_EQ(read({"--name"}), "unknown option, or its value is missing: --name");
    EXPECT_EQ(read({"--nome", "x"}), "unknown option, or its value is missing: --nome");
    EXPECT_EQ(read({"--name", "a/b", "c"}), "not the name of a file: a/b");
    EXPECT_EQ(read({"-o", "", "c"}), "the folder to write into has no name: -o ''");
    EXPECT_EQ(read({"--build", "b", "--binary", "c", "--", "d"}),
              "--build and --binary exclude each other");
}

} // namespace
