// Image utilities: turning images upside down, grey pictures of float rasters, and clamping.
#pragma once

#include <string>

// Turns an image of `height` packed rows of `width` elements upside down in place.
void SwapRowOrder(unsigned long width, unsigned long height, float* data);
void SwapRowOrderChar(unsigned long width, unsigned long height, char* data);

// Converts the first `height` rows and `width` columns of a float image whose rows are srcWidth floats long to grey
// RGB, packed rows of width · 3 bytes: 0 to 1 becomes 0 to 255, truncated; beyond saturates and NaN is 0. A destination
// larger than the source is a programming error: it is reported and ends the process with status 1. Equal sizes are
// allowed, although the messages say "less than".
void Float32ToRGB8(
    const float* src, unsigned char* dst, unsigned long srcWidth, unsigned long srcHeight, unsigned long width,
    unsigned long height);

// Writes Float32ToRGB8's picture of `data` to the TGA file `path`. False only when there is no memory for it; a file
// that can't be written prints a line on standard output and still gives true.
bool Snapshot(
    const float* data, const std::string& path, unsigned long srcWidth, unsigned long srcHeight, unsigned long width,
    unsigned long height);

// x limited to x1 to x2. x1 > x2 is a programming error: it is reported and ends the process with status 1.
float ClampToRange(float x, float x1, float x2);
