// Writes whole files.
#include "outputfile.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "inputfile.h"

namespace sorvane {
namespace {
std::string failureText(const std::filesystem::path& path, const std::error_code& error) {
    return "can not write " + path.string() + ": " + error.message();
}

std::error_code writeWhole(const std::filesystem::path& path, std::string_view contents) {
    FileHandle stream(std::fopen(path.c_str(), "wb"));
    if (stream == nullptr)
        return {errno, std::generic_category()};
    if (std::fwrite(contents.data(), 1, contents.size(), stream.get()) != contents.size())
        return {errno, std::generic_category()};
    if (std::fclose(stream.release()) != 0)
        return {errno, std::generic_category()};
    return {};
}
} // namespace

Failure writeOutputFile(const std::filesystem::path& path, std::string_view contents) {
    if (readInputFile(path.string(), contents.size() + 1) == contents)
        return std::nullopt;

    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error)
        return failureText(path, error);
    // A hidden name, so that patterns such as ETXYZ.OUT.* never catch it.
    const std::filesystem::path fresh =
        path.parent_path() / std::string(".").append(path.filename().string()).append(".new");
    error = writeWhole(fresh, contents);
    if (!error)
        std::filesystem::rename(fresh, path, error);
    if (!error)
        return std::nullopt;
    std::error_code ignored;
    std::filesystem::remove(fresh, ignored);
    return failureText(path, error);
}
} // namespace sorvane
