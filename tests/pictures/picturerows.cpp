// Reads the tables of the reference pictures.
#include "picturerows.h"

#include <fstream>
#include <sstream>

namespace sorvane {
std::string pictureFolder() {
    return SORVANE_PICTURE_FOLDER;
}

std::vector<PictureRow> pictureRows() {
    std::vector<PictureRow> rows;
    std::ifstream table(pictureFolder() + "pictures.txt");
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        PictureRow row;
        if (line.starts_with('#') || !(words >> row.name >> row.trajectory))
            continue;
        for (std::string option; words >> option;)
            row.options.push_back(option);
        rows.push_back(row);
    }
    return rows;
}

std::vector<PicturePoint> pointsOf(const std::string& picture) {
    std::vector<PicturePoint> points;
    std::ifstream table(pictureFolder() + "points.txt");
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        PicturePoint point;
        if (words >> point.picture >> point.x >> point.y >> point.look && point.picture == picture) {
            std::getline(words >> std::ws, point.what);
            points.push_back(point);
        }
    }
    return points;
}
} // namespace sorvane
