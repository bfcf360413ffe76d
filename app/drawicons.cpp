// Draws the viewer's icon into a theme's folders. usage: draw_icons FOLDER
#include <cstdio>

#include <QDir>
#include <QFile>

#include "windowicon.h"

using namespace sorvane;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: draw_icons FOLDER\n");
        return 2;
    }
    for (const int side : kIconSides) {
        const QString folder = QStringLiteral("%1/%2x%2/apps").arg(QFile::decodeName(argv[1])).arg(side);
        if (!QDir().mkpath(folder) || !drawnIcon(side).save(folder + QStringLiteral("/sorvane.png"))) {
            std::fprintf(stderr, "draw_icons: can't write into %s\n", qPrintable(folder));
            return 1;
        }
    }
    return 0;
}
