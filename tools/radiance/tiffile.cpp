// Pictures of radiances as TIFF: one channel of floats, with the facts as its description.
#include <algorithm>
#include <cstring>
#include <memory>

#include <tiffio.h>

#include "radiancefile.h"

namespace sorvane {
namespace {
// A file in memory, as the library asks for one.
struct Bytes {
    std::string bytes;
    std::size_t place = 0;
};

Bytes& bytesOf(thandle_t handle) {
    return *static_cast<Bytes*>(handle);
}

tmsize_t readBytes(thandle_t handle, void* to, tmsize_t count) {
    Bytes& file = bytesOf(handle);
    const std::size_t left = file.bytes.size() - std::min(file.place, file.bytes.size());
    const std::size_t size = std::min(static_cast<std::size_t>(count), left);
    if (size > 0)
        std::memcpy(to, file.bytes.data() + file.place, size);
    file.place += size;
    return static_cast<tmsize_t>(size);
}

tmsize_t writeBytes(thandle_t handle, void* from, tmsize_t count) {
    Bytes& file = bytesOf(handle);
    const auto size = static_cast<std::size_t>(count);
    if (file.bytes.size() < file.place + size)
        file.bytes.resize(file.place + size);
    std::memcpy(file.bytes.data() + file.place, from, size);
    file.place += size;
    return count;
}

toff_t seekBytes(thandle_t handle, toff_t offset, int whence) {
    Bytes& file = bytesOf(handle);
    const std::size_t from = whence == SEEK_CUR ? file.place : whence == SEEK_END ? file.bytes.size() : 0;
    file.place = from + static_cast<std::size_t>(offset);
    return file.place;
}

int closeBytes(thandle_t) {
    return 0;
}

toff_t sizeOfBytes(thandle_t handle) {
    return bytesOf(handle).bytes.size();
}
} // namespace

std::string tiffBytes(const RadianceImage& image) {
    Bytes file;
    {
        const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(
            TIFFClientOpen(
                "radiance", "wl", &file, readBytes, writeBytes, seekBytes, closeBytes, sizeOfBytes, nullptr, nullptr),
            TIFFClose);
        if (tiff == nullptr)
            return {};
        constexpr int kFloatPredictor = 3;
        const auto set = [&tiff](std::uint32_t tag, auto value) {
            return TIFFSetField(tiff.get(), tag, value) == 1;
        };
        const bool areSet =
            set(TIFFTAG_IMAGEWIDTH, image.width) && set(TIFFTAG_IMAGELENGTH, image.height) &&
            set(TIFFTAG_BITSPERSAMPLE, 32) && set(TIFFTAG_SAMPLESPERPIXEL, 1) &&
            set(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_IEEEFP) && set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) &&
            set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) && set(TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE) &&
            set(TIFFTAG_PREDICTOR, kFloatPredictor) && set(TIFFTAG_ROWSPERSTRIP, image.height) &&
            set(TIFFTAG_IMAGEDESCRIPTION, factsText(image.facts).c_str());
        if (!areSet)
            return {};
        std::vector<float> row(static_cast<std::size_t>(image.width)); // the predictor works in place
        for (int y = 0; y < image.height; ++y) {
            const auto first = image.radiances.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
            std::copy_n(first, image.width, row.begin());
            if (TIFFWriteScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y), 0) != 1)
                return {};
        }
        if (TIFFFlush(tiff.get()) != 1)
            return {};
    }
    return std::move(file.bytes);
}
} // namespace sorvane
