// Conversions between the two families of raster headers.
#pragma once

#include <ctime>

#include "bkgheader.h"
#include "ghead.h"

// Fills the whole of `ghead`; what a BKG header does not know becomes zero.
void bkg_header2ghead(const BKG_header& bkg, GHead& ghead);

// Fills `bkg` except for fileId and the last 16 bytes of associatedBlock. The origin, the zone and the geodetic texts
// are the same for every file, wherever its data lie: deliberate, existing files have them. The creation date is today.
void ghead2bkg_header(const GHead& ghead, BKG_header& bkg);

namespace sorvane {
// Writes a date as YYMMDD. A year outside 2000 to 2099 is printed as "yearsSince2000: %d\n" and written as 00.
void setFileCreationDate(BKG_header& bkg, const std::tm& date);
} // namespace sorvane

// Copies at most `width` characters and fills the rest of `dest` with zeros; a source of `width` characters or more
// leaves no room for one, and needs no closing zero.
void strcpyFillZeros(char* dest, const char* src, int width);
