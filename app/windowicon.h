// The viewer's icon, drawn at the sizes that desktops ask for.
#pragma once

#include <array>

#include <QIcon>
#include <QImage>

namespace sorvane {
constexpr std::array<int, 8> kIconSides = {16, 22, 24, 32, 48, 64, 128, 256}; // pixels

// The icon as a square picture of so many pixels a side. Needs no application.
QImage drawnIcon(int side);

// The desktop theme's icon of the viewer, which an installation brings, else the drawn one at all sizes. Needs a
// QGuiApplication.
QIcon windowIcon();
} // namespace sorvane
