// A sphere of facets as the three files of a body, for measuring.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <string>

namespace sorvane {
struct SampleBody {
    std::string vnl;
    std::string brdf;
    std::string rad;
};

// About `facets` facets between meridians and circles of latitude, facing outwards or inwards; `classes` reflectance
// classes, assigned in bands of latitude; the numbers have the digits of measured data.
inline SampleBody sampleBody(int facets, int classes, bool facesInwards = false) {
    const int columns = static_cast<int>(std::sqrt(facets));
    const int rows = facets / (2 * columns);
    const int total = 2 * columns * rows;
    SampleBody body;
    char line[256];
    const auto add = [&line](std::string& text, int length) {
        text.append(line, static_cast<std::size_t>(length));
    };

    add(body.vnl, std::snprintf(line, sizeof line, "%d %d\n-5 5 -5 5 -5 5\n", (rows + 1) * columns, total));
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const double latitude = std::numbers::pi * (row + 0.5) / (rows + 1);
            const double longitude = 2.0 * std::numbers::pi * column / columns;
            const double x = std::sin(latitude) * std::cos(longitude);
            const double y = std::sin(latitude) * std::sin(longitude);
            const double z = std::cos(latitude);
            const double side = facesInwards ? -1.0 : 1.0;
            add(body.vnl, std::snprintf(
                              line, sizeof line, "%.6f %.6f %.6f %.6f %.6f %.6f vertex\n", 5.0 * x, 5.0 * y, 5.0 * z,
                              side * x, side * y, side * z));
        }
    int number = 0;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const int next = (column + 1) % columns;
            const int a = row * columns + column + 1;
            const int b = row * columns + next + 1;
            const int c = a + columns;
            const int d = b + columns;
            const auto addFacet = [&](int second, int third) {
                add(body.vnl, std::snprintf(
                                  line, sizeof line, "%d %d %d %d facet\n", ++number, a, facesInwards ? third : second,
                                  facesInwards ? second : third));
            };
            addFacet(c, d);
            addFacet(d, b);
        }

    add(body.brdf, std::snprintf(line, sizeof line, "BRDF\n%d\n", classes));
    for (int i = 0; i < classes; ++i)
        add(body.brdf, std::snprintf(line, sizeof line, "0.1%d 0.6%d 0.25 0.3%d 0 paint\n", i % 10, i % 10, i % 10));
    const int perBand = total / (4 * classes);
    for (int band = 0; band < 4 * classes; ++band)
        add(body.brdf, std::snprintf(
                           line, sizeof line, "%d %d %d band\n", band * perBand + 1,
                           band + 1 == 4 * classes ? total : (band + 1) * perBand, band % classes + 1));

    const auto addWord = [&body](const auto& word) {
        body.rad.append(reinterpret_cast<const char*>(&word), 4);
    };
    for (std::int32_t word = 0; word < 19; ++word)
        addWord(word == 10 ? total : word);
    for (int pass = 0; pass < 2; ++pass) {
        for (int k = 0; k < total; ++k)
            addWord(100.0F + static_cast<float>(k % 777));
        if (pass == 0)
            body.rad += "padding.";
    }
    return body;
}
} // namespace sorvane
