// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmExport.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

class Keeper : public LlvmExport::Receiver
{
public:
    bool function(ExportedFunction& function) override
    {
        _text += function._name + "(";
        for (const std::string& file : function._files) {
            _text += file + " ";
        }
        for (size_t i = 0; i < function._regions.size(); ++i) {
            _text += std::to_string(function._regions[i]._startLine) + "=" +
                     std::to_string(function._counts[i]) + " ";
        }
        _text += ")";
        return true;
    }

    std::string _text;
};

const char document[] =
    R"({"data":[{"files":[{"filename":"functions","segments":[[1,2,3,true]],"functions":[{"x":1}]}],)"
    R"("functions":[{"branches":[],"count":1,"filenames":["/a\"}].c","b"],"name":"f{\\","regions":)"
    R"([[2,1,3,2,5,0,0,0],[3,1,3,2,18446744073709551615,1,0,3]]},{"name":"g","filenames":["c"],)"
    R"("regions":[[9,1,9,2,0,0,0,0]]}],"totals":{"functions":{"count":2}}}],"type":"t"})";

// The functions of a text that comes in pieces.
std::string functions(const std::string& text, size_t piece, bool& isGood)
{
    Keeper keeper;
    LlvmExport reader(keeper);
    isGood = true;
    for (size_t at = 0; at < text.size() && isGood; at += piece) {
        isGood = reader.receive(text.data() + at, std::min(piece, text.size() - at));
    }
    isGood = isGood && reader.isWhole();
    return keeper._text;
}

TEST(LlvmExportTest, ReadsADocumentInPiecesOfAnySize)
{
    for (const size_t piece : {1u, 2u, 7u, 100u, 100000u}) {
        bool isGood = false;
        EXPECT_EQ(functions(document, piece, isGood),
                  "f{\\(/a\"}].c b 2=5 3=18446744073709551615 )g(c 9=0 )");
        EXPECT_TRUE(isGood) << piece;
    }
}

TEST(LlvmExportTest, RefusesOtherDocuments)
{
    const std::string whole = document;
    bool isGood = true;
    for (size_t size = 0; size < whole.size(); ++size) {
        (void)functions(whole.substr(0, size), 64, isGood);
        EXPECT_FALSE(isGood) << size;
    }
    for (
        const char* text :
        {"{}", "[]", R"({"data":[{"functions":{}}]})", R"({"data":[{"functions":[{}]}]})",
         R"({"data":[{"functions":[{"name":"f","filenames":["a"],"regions":[[1,2,3]]}]}]})",
         R"({"data":[{"functions":[{"name":"f","filenames":["a"],"regions":[[1,1,1,1,1,0,0,9]]}]}]})",
         R"({"data":[{"functions":[{"name":"f","filenames":["a"],"regions":[[5000000000,1,1,1,1,0,0,0]]}]}]})",
         R"({"data":[{"functions":[]}]}])"}) {
        (void)functions(text, 64, isGood);
        EXPECT_FALSE(isGood) << text;
    }
    // Nothing of this is kept.
    (void)functions(std::string(100000, '['), 4096, isGood);
    EXPECT_FALSE(isGood);
}

} // namespace
