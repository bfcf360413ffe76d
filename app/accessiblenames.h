// Names, focus and tab order of the window's controls, for those who don't see or point.
#pragma once

namespace Ui {
class new_sorvane;
}

namespace sorvane {
void makeAccessible(Ui::new_sorvane& form);
} // namespace sorvane
