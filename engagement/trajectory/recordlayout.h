// Which word of a data line goes where.
#pragma once

#include <concepts>

#include "keyframe.h"

namespace sorvane {
// A cursor over the words of a line, such as BasicTextWords. A copy of it goes on by itself. Each next…() takes one
// word; a missing or malformed one gives 0.
template <class W>
concept WordCursor = std::copyable<W> && requires(W words) {
    { words.atEnd() } -> std::same_as<bool>;
    words.skip();
    { words.nextInt() } -> std::same_as<int>;
    { words.nextFloat() } -> std::same_as<float>;
    { words.nextDouble() } -> std::same_as<double>;
};

template <WordCursor Words> void readFloats(Words& words, float (&floats)[3]) {
    for (float& value : floats)
        value = words.nextFloat();
}

// The first line of a record: time and flare count, target position and attitude.
template <WordCursor Words> void readTargetLine(Words words, keyframe& sample) {
    sample.time = words.nextDouble();
    sample.flareCount = words.nextInt();
    readFloats(words, sample.targetPos);
    readFloats(words, sample.targetAtt);
}

template <WordCursor Words> void readThreatLine(Words words, keyframe& sample) {
    readFloats(words, sample.threatPos);
    readFloats(words, sample.threatAtt);
}

// The first two words are not used.
template <WordCursor Words> void readGyroLine(Words words, keyframe& sample) {
    words.skip();
    words.skip();
    readFloats(words, sample.gyro);
}

template <WordCursor Words> flareKeyframe readFlareLine(Words words) {
    flareKeyframe flare;
    flare.id = words.nextInt();
    flare.kind = words.nextInt();
    readFloats(words, flare.pos);
    flare.scalar = words.nextFloat();
    readFloats(words, flare.values);
    flare.intensity[0] = flare.intensity[1] = flare.intensity[2] = words.nextFloat();
    Words otherBands = words;
    words.skip();
    words.skip();
    flare.bandCount = words.nextInt();
    if (flare.bandCount >= 3) {
        flare.intensity[1] = otherBands.nextFloat();
        flare.intensity[2] = otherBands.nextFloat();
    }
    return flare;
}
} // namespace sorvane
