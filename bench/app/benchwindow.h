// The real window on a demonstration engagement, for benchmarks.
#pragma once

class AircraftWidget;

// The view of a window that is made once, with an application around it: 824 × 480, from the engagement's start.
AircraftWidget& benchView();
