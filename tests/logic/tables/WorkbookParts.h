#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <map>
#include <string>

namespace kelvo::test {

/// A number of a ZIP archive, its lowest byte first.
inline std::uint32_t Field(const std::string& bytes, std::size_t at, int size) {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i)));
    return value;
}

inline std::string Unpacked(std::string packed, std::size_t size) {
    std::string out(size, '\0');
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in + stream.avail_out, 0u);
    inflateEnd(&stream);
    return out;
}

/// The parts of the archive by its directory; every number that is given twice must agree.
inline std::map<std::string, std::string> Parts(const std::string& bytes) {
    std::map<std::string, std::string> parts;
    const std::size_t end = bytes.size() - 22;
    EXPECT_EQ(Field(bytes, end, 4), 0x06054b50u);
    EXPECT_EQ(Field(bytes, end + 8, 2), Field(bytes, end + 10, 2));
    EXPECT_EQ(Field(bytes, end + 4, 4) + Field(bytes, end + 20, 2), 0u) << "one disk, no comment";
    std::size_t at = Field(bytes, end + 16, 4);
    EXPECT_EQ(at + Field(bytes, end + 12, 4), end);
    for (std::uint32_t left = Field(bytes, end + 10, 2); left > 0; --left) {
        EXPECT_EQ(Field(bytes, at, 4), 0x02014b50u);
        const std::uint32_t crc = Field(bytes, at + 16, 4), packed = Field(bytes, at + 20, 4),
                            size = Field(bytes, at + 24, 4), length = Field(bytes, at + 28, 2);
        const std::string name = bytes.substr(at + 46, length);
        EXPECT_EQ(bytes.substr(at + 30, 12), std::string(12, '\0')) << "no extra field, no comment, no attributes";
        const std::size_t head = Field(bytes, at + 42, 4);
        EXPECT_EQ(Field(bytes, head, 4), 0x04034b50u);
        EXPECT_EQ(bytes.substr(head + 4, 24), bytes.substr(at + 6, 24)) << "both heads say the same of " << name;
        EXPECT_EQ(Field(bytes, head + 8, 2), 8u) << "deflated";
        EXPECT_EQ(bytes.substr(head + 30, length), name);
        const std::string part = Unpacked(bytes.substr(head + 30 + length, packed), size);
        EXPECT_EQ(crc32(0, reinterpret_cast<const Bytef*>(part.data()), size), crc) << name;
        EXPECT_TRUE(parts.emplace(name, part).second) << name;
        at += 46 + length;
    }
    EXPECT_EQ(at, end);
    return parts;
}

/// What stands between two texts.
inline std::string Between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t start = text.find(from) + from.size();
    return text.substr(start, text.find(to, start) - start);
}

}  // namespace kelvo::test
