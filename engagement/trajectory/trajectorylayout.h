// Which line of a trajectory holds what. `Lines` hands out logical lines one after the other:
//     bool next()              goes to the next line; false, with an empty line, at the end of the data
//     QString text()           the line's simplified text (for the header only)
//     auto withWords(use)      calls `use` with a cursor at the line's first word
#pragma once

#include <vector>

#include "recordlayout.h"
#include "trajectoryreader.h"

// Takes twelve lines.
template <class Lines> TrajectoryFileHeader readHeaderFrom(Lines& lines) {
    const auto nextText = [&] {
        lines.next();
        return lines.text();
    };
    const auto readTriple = [&](float(&triple)[3]) {
        lines.next();
        lines.withWords([&](auto words) { readFloats(words, triple); });
    };
    TrajectoryFileHeader header;
    header.terrainTopoPath = nextText();
    header.terrainRadPath = nextText();
    header.targetSignaturePath = nextText();
    readTriple(header.terrainTripleA);
    readTriple(header.terrainTripleB);
    header.targetGeometryPath = nextText();
    header.targetBrdfPath = nextText();
    lines.next(); // carries nothing that is used
    header.text9 = nextText();
    lines.next();
    header.int10 = lines.withWords([](auto words) { return words.nextInt(); });
    header.threatId = nextText();
    lines.next();
    header.fieldOfView = lines.withWords([&](auto words) { return words.nextFloatOr(header.fieldOfView); });
    return header;
}

// Goes to a record's first line; false when the records have ended.
template <class Lines> bool nextRecord(Lines& lines) {
    return lines.next() && !lines.withWords([](const auto& words) { return words.atEnd(); });
}

// Reads the record at whose first line `lines` is. Its flares replace what is in `flares`, where a caller finds the
// memory of the record before. False when the data ended within the record.
template <class Lines> bool readRecord(Lines& lines, keyframe& sample, std::vector<flareKeyframe>& flares) {
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
