// SPDX-License-Identifier: MIT
#include "tests/support/RecFileBuilder.h"

#include <fstream>
#include <stdexcept>

namespace {

constexpr size_t FileHeaderSize = 64;

enum FileHeaderOffset { Total = 4, Records = 8, First = 16, Last = 20 };
enum RecordOffset { Next = 0, Size = 4, RealSize = 8, Tag = 12 };

} // namespace

ByteString& ByteString::u16(uint32_t value)
{
    _bytes += static_cast<char>(value >> 8 & 0xff);
    _bytes += static_cast<char>(value & 0xff);
    return *this;
}

ByteString& ByteString::u32(uint32_t value)
{
    return u16(value >> 16).u16(value & 0xffff);
}

ByteString& ByteString::raw(const std::string& bytes)
{
    _bytes += bytes;
    return *this;
}

ByteString& ByteString::name(const std::string& text)
{
    return u16(static_cast<uint32_t>(text.size() + 1)).raw(text).zeros(1);
}

ByteString& ByteString::zeros(size_t count)
{
    _bytes.append(count, '\0');
    return *this;
}

RecFileBuilder::RecFileBuilder(uint32_t userHeaderSz) : _userHeaderSz(userHeaderSz), _total(0)
{
    ByteString header;
    header.u32(0x6710).u32(0).u32(0).u32(userHeaderSz).u32(FileHeaderSize + userHeaderSz);
    header.u32(0).u32(1).zeros(36).zeros(userHeaderSz);
    _bytes = header.bytes();
}

RecFileBuilder& RecFileBuilder::userHeader(const std::string& bytes)
{
    if (bytes.size() != _userHeaderSz) {
        throw std::logic_error("a user header of another size");
    }
    _bytes.replace(FileHeaderSize, bytes.size(), bytes);
    return *this;
}

RecFileBuilder& RecFileBuilder::record(uint32_t tag, const std::string& payload)
{
    const auto offset = static_cast<uint32_t>(_bytes.size());
    const auto size = static_cast<uint32_t>(payload.size());
    if (!_offsets.empty()) {
        setWord(_offsets.back() + Next, offset);
    }
    _offsets.push_back(offset);
    _bytes += ByteString().u32(0).u32(size).u32(size).u32(tag).raw(payload).bytes();
    _total += size + 16;
    setWord(Total, _total);
    setWord(Records, static_cast<uint32_t>(_offsets.size()));
    return setWord(Last, offset);
}

RecFileBuilder& RecFileBuilder::append(const std::string& bytes)
{
    _bytes += bytes;
    return *this;
}

RecFileBuilder& RecFileBuilder::setByte(size_t offset, unsigned char value)
{
    _bytes.at(offset) = static_cast<char>(value);
    return *this;
}

RecFileBuilder& RecFileBuilder::setWord(size_t offset, uint32_t value)
{
    if (offset + 4 > _bytes.size()) {
        throw std::out_of_range("a word behind the end of the file");
    }
    _bytes.replace(offset, 4, ByteString().u32(value).bytes());
    return *this;
}

RecFileBuilder& RecFileBuilder::cutAt(size_t offset)
{
    _bytes.resize(offset);
    return *this;
}

RecFileBuilder& RecFileBuilder::linkTo(size_t record, uint32_t offset)
{
    return setWord(offsetOf(record) + Next, offset);
}

RecFileBuilder& RecFileBuilder::setSizes(size_t record, uint32_t size, uint32_t realSize)
{
    return setWord(offsetOf(record) + Size, size).setWord(offsetOf(record) + RealSize, realSize);
}

RecFileBuilder& RecFileBuilder::setTag(size_t record, uint32_t tag)
{
    return setWord(offsetOf(record) + Tag, tag);
}

RecFileBuilder& RecFileBuilder::startAt(uint32_t offset)
{
    return setWord(First, offset);
}

std::string RecFileBuilder::write(const std::string& path) const
{
    std::ofstream(path, std::ios::binary) << _bytes;
    return path;
}
