// Which line of a trajectory holds what.
#pragma once

#include <concepts>
#include <vector>

#include "recordlayout.h"
#include "trajectoryreader.h"

namespace sorvane {
// A function of a cursor, for the concepts below.
struct AnyUseOfWords {
    bool operator()(const WordCursor auto& words) const { return words.atEnd(); }
};

// Goes from one logical line to the next: next() is false, and the line then empty, at the end of the data.
// withWords(use) returns what `use` returns for a cursor at the line's first word.
template <class L>
concept LineSource = requires(L lines) {
    { lines.next() } -> std::same_as<bool>;
    { lines.withWords(AnyUseOfWords()) } -> std::same_as<bool>;
};

// The lines of a header, which holds texts too: text() is the line's simplified text, and the cursor has a
// nextRealOr(replacement) for a malformed number.
template <class L>
concept HeaderLineSource = LineSource<L> && requires(const L lines) {
    { lines.text() } -> std::convertible_to<QString>;
};

// Takes twelve lines.
template <HeaderLineSource Lines> TrajectoryFileHeader readHeaderFrom(Lines& lines) {
    const auto nextText = [&] {
        lines.next();
        return lines.text();
    };
    const auto takeTriple = [&](float(&triple)[3]) {
        lines.next();
        lines.withWords([&](auto words) {
            for (float& value : triple)
                value = static_cast<float>(words.nextReal());
        });
    };
    TrajectoryFileHeader header;
    header.terrainTopoPath = nextText();
    header.terrainRadPath = nextText();
    header.targetSignaturePath = nextText();
    takeTriple(header.terrainTripleA);
    takeTriple(header.terrainTripleB);
    header.targetGeometryPath = nextText();
    header.targetBrdfPath = nextText();
    lines.next(); // carries nothing that is used
    header.text9 = nextText();
    lines.next();
    header.int10 = lines.withWords([](auto words) { return words.nextInt(); });
    header.threatId = nextText();
    lines.next();
    header.fieldOfView =
        static_cast<float>(lines.withWords([&](auto words) { return words.nextRealOr(double{header.fieldOfView}); }));
    return header;
}

// Goes to a record's first line; false when the records have ended.
template <LineSource Lines> bool nextRecord(Lines& lines) {
    return lines.next() && !lines.withWords([](const auto& words) { return words.atEnd(); });
}

// Reads the record at whose first line `lines` is. Its flares replace what is in `flares`, where a caller finds the
// memory of the record before. False when the data ended within the record.
template <LineSource Lines> bool readRecord(Lines& lines, Sample& sample, std::vector<Flare>& flares) {
    lines.withWords([&](const auto& words) { readTargetLine(words, sample); });
    if (lines.next())
        lines.withWords([&](const auto& words) { readThreatLine(words, sample); });
    bool isWhole = lines.next();
    if (isWhole)
        lines.withWords([&](const auto& words) { readGyroLine(words, sample); });
    // The count is what the file claims: nothing is allocated by it.
    flares.clear();
    for (int i = 0; i < sample.flareCount && (isWhole = lines.next()); ++i)
        flares.push_back(lines.withWords([](const auto& words) { return readFlareLine(words); }));
    return isWhole;
}
} // namespace sorvane
