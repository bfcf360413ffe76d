// A part of a list of files, for one of several processes.
#include "shard.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace sorvane {
namespace {
std::optional<std::size_t> numberIn(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<std::size_t> numberOfVariable(const char* name) {
    const char* const text = std::getenv(name);
    return text == nullptr ? std::nullopt : numberIn(text);
}
} // namespace

Outcome<Shard> shardOf(const std::string& text) {
    const std::size_t slash = text.find('/');
    const auto number = numberIn(std::string_view(text).substr(0, slash));
    const auto count = slash == std::string::npos ? std::nullopt : numberIn(std::string_view(text).substr(slash + 1));
    if (!number || !count || *number < 1 || *number > *count)
        return Problem("--shard is not a number and how many there are, as 2/8: " + text);
    return Shard{*number, *count};
}

Shard shardOfArrayTask() {
    const auto task = numberOfVariable("SLURM_ARRAY_TASK_ID");
    const auto count = numberOfVariable("SLURM_ARRAY_TASK_COUNT");
    const std::size_t first = numberOfVariable("SLURM_ARRAY_TASK_MIN").value_or(0);
    if (!task || !count || *task < first || *task - first >= *count)
        return {};
    return {*task - first + 1, *count};
}

std::vector<std::string> shardFiles(std::vector<std::string> files, const Shard& shard) {
    std::ranges::sort(files);
    files.erase(std::unique(files.begin(), files.end()), files.end());
    std::vector<std::string> part;
    for (std::size_t i = shard.number - 1; i < files.size(); i += shard.count)
        part.push_back(std::move(files[i]));
    return part;
}
} // namespace sorvane
