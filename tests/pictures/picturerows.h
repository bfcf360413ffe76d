// The reference pictures and what is known of single points of them, as the tables beside this file list them.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace sorvane {
struct PictureRow {
    std::string name;
    std::string trajectory;           // in the demonstration's folder, or "scenes/…" for a small scene
    std::vector<std::string> options; // of `sorvane render`

    friend std::ostream& operator<<(std::ostream& stream, const PictureRow& row) { return stream << row.name; }
};

// A pixel whose look was worked out without drawing anything.
struct PicturePoint {
    std::string picture;
    std::string what;
    int x = 0;        // from the left
    int y = 0;        // from the top
    std::string look; // a name that looksLike() knows
};

// The folder of tables, references and scenes, with a closing slash.
std::string pictureFolder();

std::vector<PictureRow> pictureRows();
std::vector<PicturePoint> pointsOf(const std::string& picture);
} // namespace sorvane
