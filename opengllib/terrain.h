// The terrain under an engagement: a set of raster tiles.
#pragma once

class Terrain {};
