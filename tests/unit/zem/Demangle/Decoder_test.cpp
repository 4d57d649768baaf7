#include "zem/Demangle/Decoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

struct Work
{
    bool isDecoded;
    size_t done;
    size_t most;
};

Work workFor(const std::string& encoded, int mode)
{
    Demangle::Decoder decoder(encoded.c_str(), mode);
    Demangle::string name;
    const bool isDecoded = decoder.decode(name);
    return {isDecoded, decoder.work(), decoder.mostWork()};
}

TEST(DecoderTest, AnOrdinaryNameCostsAStepOrTwoForEachCharacter)
{
    const std::string name = "append__t4List1Z3FooFPC3FooRCUlPFPCci_vN23T1";
    for (int mode = -1; mode <= 1; ++mode) {
        const Work work = workFor(name, mode);
        EXPECT_TRUE(work.isDecoded);
        EXPECT_LE(work.done, 2 * name.size());
        EXPECT_GT(work.done, 10u);
    }
}

struct Hostile
{
    const char* what;
    std::string name;
};

// Each of these is short for what it asks for: long types that show little, repeated.
const Hostile hostileNames[] = {
    {"Qualifiers", "f__F" + repeated("C", 16000) + "i" + repeated("N91", 5600)},
    {"QualifiersOfAnInteger", "f__FU" + repeated("V", 16000) + "i" + repeated("N91", 5600)},
    {"Pointers", "f__F" + repeated("P", 16000) + "i" + repeated("N91", 5600)},
    {"LongName", "f__F16000" + repeated("x", 16000) + repeated("N91", 5600)},
    {"Functions",
     "f__F" + repeated("PF", 500) + "i" + repeated("_v", 500) + repeated("N91", 10000)},
    {"BackReferences", "f__FP" + repeated("C", 10000) + "i" + repeated("T1", 10000)},
};

void PrintTo(const Hostile& hostile, std::ostream* out)
{
    *out << hostile.what;
}

class DecoderWorkTest : public ::testing::TestWithParam<Hostile>
{};

TEST_P(DecoderWorkTest, IsBounded)
{
    const std::string& name = GetParam().name;
    for (int mode = -1; mode <= 1; ++mode) {
        const Work work = workFor(name, mode);
        // The bound, and one more type and its text.
        EXPECT_LE(work.done, work.most + 64 * name.size() / 16 + 64 * 1024 / 16 + name.size());
        EXPECT_FALSE(work.isDecoded);
    }
    EXPECT_EQ(workFor(name, 0).most, 256 * 1024 + 32 * name.size());
}

INSTANTIATE_TEST_SUITE_P(Names, DecoderWorkTest, ::testing::ValuesIn(hostileNames),
                         [](const auto& row) { return std::string(row.param.what); });

TEST(DecoderTest, WhatRepeatsWhatRepeatsIsBounded)
{
    std::string type = "i";
    for (int level = 0; level < 300; ++level) {
        type = "PF" + type + "N11_v";
    }
    const Work work = workFor("f__F" + type, 0);
    EXPECT_FALSE(work.isDecoded);
    EXPECT_LE(work.done, work.most + 10000);
}

} // namespace
