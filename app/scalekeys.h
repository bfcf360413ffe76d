// The keys that choose what the colours of a view mean in radiance, in the main view and in further ones.
#pragma once

#include <optional>

#include <QString>

#include "keytable.h"
#include "picturescale.h"

namespace sorvane {
// The scale after such a key, where `shown` are the ends of the picture before it; nothing for another key.
std::optional<PictureScale> scaleAfter(KeyCommand command, PictureScale scale, const ScaleEnds& shown);

// What a scale is called.
QString scaleText(const PictureScale& scale);
} // namespace sorvane
