// Reads a movie back with the FFmpeg libraries, for tests.
#pragma once

#include <QImage>
#include <QString>
#include <string>
#include <vector>

struct Movie {
    std::string container; // the format's short name, such as "avi"
    std::string codec;     // such as "mpeg4"
    int streamCount = 0;
    int codecHeaderBytes = 0; // that the container's header holds
    int width = 0;
    int height = 0;
    double framesPerSecond = 0.0;
    std::vector<bool> isKeyFrame; // one per frame
    std::vector<double> seconds;  // decoding times of the coded frames
    std::vector<QImage> frames;   // decoded, Format_RGB32
};

// A movie without frames when the file can't be read; the test program's output then says why.
Movie readMovie(const QString& fileName);
