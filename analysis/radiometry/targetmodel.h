// A target as its radiation is worked out of it: its body and its light, in each band.
#pragma once

#include <memory>
#include <vector>

#include "atmfile.h"
#include "targetfiles.h"

namespace sorvane {
struct TargetModel {
    struct Band {
        char digit = 0;
        SignatureBody body{};
        AtmFile atmosphere{};
    };
    std::vector<Band> bands{}; // that of the files that the trajectory names first
};

// Reads the files, through the library's memory of them: one thread at a time. Null, after the loaders' messages, when
// those of the first band can't be used; another band that can't is left out.
std::shared_ptr<const TargetModel> loadTargetModel(const std::vector<TargetFiles>& files);
} // namespace sorvane
