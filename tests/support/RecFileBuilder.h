// SPDX-License-Identifier: MIT
//
// Record files byte by byte, right or wrong on purpose. It shares no code with the readers, so that
// a mistake in their idea of the format shows.
//
//     RecFileBuilder file(64);
//     file.userHeader(mapHeader()).record(100, payload).record(100, other);
//     file.linkTo(1, file.offsetOf(0)); // a ring
//     file.write(dir.path("ring.map"));
//
// Every operation keeps the file's header as a writer would leave it; damage is done afterwards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Big-endian bytes, one after the other.
class ByteString
{
public:
    ByteString& u16(uint32_t value);
    ByteString& u32(uint32_t value);
    ByteString& raw(const std::string& bytes);
    // A 16-bit length, which counts the terminating zero, the text and the zero.
    ByteString& name(const std::string& text);
    // `count` zero bytes.
    ByteString& zeros(size_t count);

    const std::string& bytes() const { return _bytes; }

private:
    std::string _bytes;
};

class RecFileBuilder
{
public:
    // A file header and a zero user header of `userHeaderSz` bytes.
    explicit RecFileBuilder(uint32_t userHeaderSz = 64);

    // Replaces the user header, which must have the size given to the constructor.
    RecFileBuilder& userHeader(const std::string& bytes);

    // Puts a record at the end and links it behind the last one.
    RecFileBuilder& record(uint32_t tag, const std::string& payload);

    // Bytes behind everything, in no record.
    RecFileBuilder& append(const std::string& bytes);

    // Damage. Offsets are bytes from the start of the file; records count from 0.
    RecFileBuilder& setByte(size_t offset, unsigned char value);
    RecFileBuilder& setWord(size_t offset, uint32_t value);
    RecFileBuilder& cutAt(size_t offset);
    RecFileBuilder& linkTo(size_t record, uint32_t offset);
    RecFileBuilder& setSizes(size_t record, uint32_t size, uint32_t realSize);
    RecFileBuilder& setTag(size_t record, uint32_t tag);
    RecFileBuilder& startAt(uint32_t offset);

    // Where the header and the payload of a record are.
    uint32_t offsetOf(size_t record) const { return _offsets.at(record); }
    uint32_t payloadOf(size_t record) const { return _offsets.at(record) + 16; }

    size_t size() const { return _bytes.size(); }
    const std::string& bytes() const { return _bytes; }

    // Writes the file and returns `path`.
    std::string write(const std::string& path) const;

private:
    uint32_t _userHeaderSz;
    uint32_t _total;
    std::string _bytes;
    std::vector<uint32_t> _offsets;
};
