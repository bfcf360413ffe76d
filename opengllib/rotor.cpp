// The rotor file: the spinning parts of a body.
#include "rotor.h"

#include <iostream>

#include "cnumericlocale.h"
#include "endprocess.h"
#include "inputfile.h"
#include "matrix.h"
#include "messages.h"
#include "texthead.h"

using namespace sorvane;

namespace {
// Skips lines that begin with '#'. Returns whether a character other than that follows; it is left in the stream.
bool skipComments(std::FILE* stream) {
    int c = std::getc(stream);
    while (c == '#') {
        while (c != '\n' && c != EOF)
            c = std::getc(stream);
        if (c != EOF)
            c = std::getc(stream);
    }
    if (c == EOF)
        return false;
    std::ungetc(c, stream);
    return true;
}
} // namespace

bool Rotor::looksLike(const sorvane::TextHead& head) {
    constexpr std::size_t kFields = 9;
    return head.integers(0) >= 2 && head.numbers(0) >= kFields && head.words(0) == head.numbers(0);
}

Rotor::Rotor(const char* path) {
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr) {
        printErrorMessage("Error: Rotor::Rotor: Unable to open rotor file \"%s\" for reading.", path);
        endProcess();
    }
    read(stream.get());
}

void Rotor::read(std::FILE* stream) {
    const CNumericLocale decimalPoint;
    while (std::feof(stream) == 0 && skipComments(stream)) {
        const auto i = static_cast<std::size_t>(rotorCount_);
        if (i >= kMaximumRotors) {
            printErrorMessage("Error: Rotor::Rotor: Too many rotor entries (%d).", rotorCount_);
            endProcess();
        }
        // Not tested: the range is, and a line that can't be read leaves it 0 to 0. The line feed in the format takes
        // the white space up to the next entry along, so that the end of the file is seen after the last one.
        static_cast<void>(std::fscanf(
            stream, "%d %d %f %f %f %f %f %f %f\n", &startFacet_[i], &endFacet_[i], &hub_[i][0], &hub_[i][1],
            &hub_[i][2], &axis_[i][0], &axis_[i][1], &axis_[i][2], &rate_[i]));
        if (startFacet_[i] > endFacet_[i] || startFacet_[i] < 1) {
            printErrorMessage(
                "error: Rotor::Rotor: Invalid facet range %d to %d for rotor #%d.", startFacet_[i], endFacet_[i],
                rotorCount_ + 1);
            endProcess();
        }
        ++rotorCount_;
    }
}

bool Rotor::isValid(int rotor) const {
    if (rotor >= 1 && rotor <= rotorCount_)
        return true;
    printErrorMessage("Invalid rotor number \"%d\" (rotorCount = %d).", rotor, rotorCount_);
    return false;
}

int Rotor::getRotorStart(int rotor) const {
    return isValid(rotor) ? startFacet_[static_cast<std::size_t>(rotor - 1)] : -1;
}

int Rotor::getRotorEnd(int rotor) const {
    return isValid(rotor) ? endFacet_[static_cast<std::size_t>(rotor - 1)] : -1;
}

void Rotor::getRotorMatrix(int rotor, float time, float* matrix) const {
    if (!isValid(rotor))
        return;
    const auto i = static_cast<std::size_t>(rotor - 1);
    const auto& [x, y, z] = hub_[i];
    const float minusX = -x;
    const float minusY = -y;
    const float minusZ = -z;
    const float angle = 360.0F * rate_[i] * time;
    mat_identity_(matrix);
    mat_translate_(matrix, &minusX, &minusY, &minusZ);
    mat_rotate_d_(matrix, axis_[i].data(), &angle);
    mat_translate_(matrix, &x, &y, &z);
}
