// SPDX-License-Identifier: MIT
//
// Walks the chain of a record file whose records read as much as their size says.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipVLRecFile.h"

#include <ostream>
#include <vector>

namespace {

class FuzzedFile : public qipVLRecFile
{
public:
    void dump(std::ostream& out) override { out << _header; }

protected:
    int processRecord(unsigned int tag, unsigned int size, unsigned int) override
    {
        char bytes[4096];
        for (uint64_t left = size; left > 0;) {
            const size_t piece = left < sizeof bytes ? static_cast<size_t>(left) : sizeof bytes;
            const size_t read = std::fread(bytes, 1, piece, _fp);
            if (read != piece) {
                return FileCorrupt;
            }
            left -= read;
        }
        return tag == 0xffffffff ? BadParameter : NoError;
    }
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile input(data, size);
    FuzzedFile file;
    if (file.open(input.path().c_str(), qipVLRecFile::READ, 0) == qipVLRecFile::NoError) {
        (void)file.load(); // any code will do
        (void)file.load();
    }
    return 0;
}
