// Which word of a data line goes where.
#pragma once

#include <concepts>

#include "sample.h"

namespace sorvane {
// A cursor over the words of a line, such as BasicTextWords. A copy of it goes on by itself. Each next…() takes one
// word; a missing or malformed one gives 0. nextReal() takes a number that has to fit into single precision.
template <class W>
concept WordCursor = std::copyable<W> && requires(W words) {
    { words.atEnd() } -> std::same_as<bool>;
    words.skip();
    { words.nextInt() } -> std::same_as<int>;
    { words.nextReal() } -> std::same_as<double>;
    { words.nextDouble() } -> std::same_as<double>;
};

template <WordCursor Words> void readTriple(Words& words, Triple& triple) {
    for (double& value : triple)
        value = words.nextReal();
}

// The first line of a record: time and flare count, target position and attitude.
template <WordCursor Words> void readTargetLine(Words words, Sample& sample) {
    sample.time = words.nextDouble();
    sample.flareCount = words.nextInt();
    readTriple(words, sample.targetPosition);
    readTriple(words, sample.targetAttitude);
}

template <WordCursor Words> void readThreatLine(Words words, Sample& sample) {
    readTriple(words, sample.threatPosition);
    readTriple(words, sample.threatAttitude);
}

// The first two words are not used.
template <WordCursor Words> void readGyroLine(Words words, Sample& sample) {
    words.skip();
    words.skip();
    readTriple(words, sample.gyro);
}

template <WordCursor Words> Flare readFlareLine(Words words) {
    Flare flare;
    flare.id = words.nextInt();
    flare.kind = words.nextInt();
    readTriple(words, flare.position);
    flare.brightness = words.nextReal();
    readTriple(words, flare.angles);
    flare.halfAxes.fill(words.nextReal());
    Words otherHalfAxes = words;
    words.skip();
    words.skip();
    flare.bandCount = words.nextInt();
    if (flare.bandCount >= 3) {
        flare.halfAxes[1] = otherHalfAxes.nextReal();
        flare.halfAxes[2] = otherHalfAxes.nextReal();
    }
    return flare;
}
} // namespace sorvane
