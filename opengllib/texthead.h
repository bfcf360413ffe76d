// The first lines of a text as words, from which readers tell whether a file of any name could be theirs.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace sorvane {
// Lines count from 0; a line that isn't there has no words. The bytes must outlive it.
class TextHead {
public:
    enum class Comments { None, Hash }; // whether lines that begin with "#" are left out

    explicit TextHead(std::string_view bytes, Comments comments = Comments::Hash);

    std::string_view bytes() const { return bytes_; }
    std::size_t lineCount() const { return lines_.size(); }
    bool isBlank(std::size_t line) const { return line < lineCount() && lines_[line].empty(); }
    std::size_t words(std::size_t line) const { return line < lineCount() ? lines_[line].size() : 0; }
    std::string_view word(std::size_t line, std::size_t place) const;

    // How many finite numbers, or integers that fit an int, the line begins with.
    std::size_t numbers(std::size_t line) const;
    std::size_t integers(std::size_t line) const;

private:
    std::string_view bytes_;
    std::vector<std::vector<std::string_view>> lines_;
};
} // namespace sorvane
