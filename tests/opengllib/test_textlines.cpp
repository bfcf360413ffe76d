// Lines from memory are the lines that fgets reads from a file with the same bytes.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "inputfile.h"
#include "textlines.h"

using namespace sorvane;

namespace {
using Buffers = std::vector<std::string>; // what was in the whole buffer after each line

Buffers linesFromFile(const std::string& text, std::size_t size) {
    const FileHandle stream(std::tmpfile());
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::rewind(stream.get());
    Buffers lines;
    std::string buffer(size, '~');
    while (std::fgets(buffer.data(), static_cast<int>(size), stream.get()) != nullptr) {
        lines.push_back(buffer);
        buffer.assign(size, '~');
    }
    return lines;
}

Buffers linesFromMemory(const std::string& text, std::size_t size) {
    TextLines lines(text);
    Buffers result;
    std::string buffer(size, '~');
    while (lines.getLine(buffer.data(), size)) {
        result.push_back(buffer);
        buffer.assign(size, '~');
    }
    EXPECT_EQ(buffer, std::string(size, '~')) << "the buffer is left alone at the end";
    return result;
}
} // namespace

TEST(TextLines, AgreesWithTheStreamReader) {
    for (const std::string& text :
         {std::string(), std::string("\n\n"), std::string("one\r\ntwo"), std::string("1234567\n8"),
          std::string("12345678\n9"), std::string("long line that is split over and over\nnext\n"),
          std::string("nul\0inside\n\0\n", 13), std::string("end\0", 4)})
        for (const std::size_t size : {2U, 3U, 8U, 9U, 256U})
            EXPECT_EQ(linesFromMemory(text, size), linesFromFile(text, size)) << text << ", buffer of " << size;
}

TEST(TextLines, GivesNothingIntoABufferWithoutRoom) {
    TextLines lines("text\n");
    char buffer[2] = {'~', '~'};
    EXPECT_FALSE(lines.getLine(buffer, 0));
    EXPECT_FALSE(lines.getLine(buffer, 1));
    EXPECT_EQ(buffer[0], '~');
}
