// The contents of raster files of both families.
#include "rasterfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <numeric>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

#include "headerconversion.h"
#include "inputfile.h"
#include "rasterlayout.h"

namespace sorvane {
namespace {
// A file without a name that lives in memory, for the header's writer, which writes files.
class MemoryFile {
public:
    MemoryFile() : descriptor_(::memfd_create("raster", MFD_CLOEXEC)) {
        if (descriptor_ < 0)
            throw std::system_error(errno, std::generic_category(), "can not make a file in memory");
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

void append(std::string& text, std::span<const std::byte> bytes) {
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}
} // namespace

GHead rasterHeader(int columns, int rows, double cellMetres, const char* fileType, std::span<const float> values) {
    GHead header{};
    std::memcpy(header.headkey, "$$L1", sizeof header.headkey);
    header.nrows = rows;
    header.ncols = columns;
    header.nbands = header.cellUnits = 1;
    header.packtype = 2;
    header.xCellSize = header.yCellSize = static_cast<float>(cellMetres);
    header.zscale = 1.0F;
    strcpyFillZeros(header.fileType, fileType, int{sizeof header.fileType});
    header.lambda1 = 3.0F;
    header.lambda2 = 5.0F;
    header.ambienttemp = 298.0F;
    strcpyFillZeros(header.idescript, "Demonstration landscape", int{sizeof header.idescript});
    if (!values.empty()) {
        const auto [least, greatest] = std::ranges::minmax(values);
        header.MinVals[0] = least;
        header.MaxVals[0] = greatest;
        const double sum = std::accumulate(values.begin(), values.end(), 0.0);
        header.mean[0] = static_cast<float>(sum / static_cast<double>(values.size()));
    }
    return header;
}

std::string torvaleFile(const GHead& header, std::span<const std::byte> samples, Rows rows) {
    std::string file;
    append(file, std::as_bytes(std::span(&header, 1)));
    const std::size_t rowBytes = samples.size() / static_cast<std::size_t>(header.nrows);
    const std::int64_t padding = rows == Rows::Records ? recordPadding(sampleSizeOf(header), header.ncols) : 0;
    for (std::size_t at = 0; at < samples.size(); at += rowBytes) {
        append(file, samples.subspan(at, rowBytes));
        file.append(static_cast<std::size_t>(padding), '\0');
    }
    return file;
}

std::string bkgFile(const GHead& header, std::span<const std::byte> samples) {
    BKG_header bkg{};
    ghead2bkg_header(header, bkg);
    std::tm midsummer{};
    midsummer.tm_year = 101;
    midsummer.tm_mon = 5;
    midsummer.tm_mday = 21;
    setFileCreationDate(bkg, midsummer);

    const MemoryFile memory;
    if (BeginBKGFile(memory.path(), bkg) == nullptr)
        throw std::system_error(errno, std::generic_category(), "can not write a raster's header");
    std::string file = readInputFile(memory.path(), sizeof(GHead)).value_or("");
    append(file, samples);
    return file;
}
} // namespace sorvane
