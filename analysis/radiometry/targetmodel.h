// A target as its radiation is worked out of it: its body and its light, in each band.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
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

// Keeps what it has read, for many engagements of few targets. May be asked from several threads at once, as long as
// nobody else reads bodies.
class TargetModels {
public:
    // `load` is loadTargetModel, or does something about its messages.
    using Load = std::function<std::shared_ptr<const TargetModel>(const std::vector<TargetFiles>&)>;
    explicit TargetModels(Load load) : load_(std::move(load)) {}

    // Null without files, and of files that can't be used.
    std::shared_ptr<const TargetModel> of(const std::vector<TargetFiles>& files);

private:
    Load load_;
    std::mutex mutex_;
    std::map<std::vector<std::string>, std::shared_ptr<const TargetModel>> models_; // by the paths
};
} // namespace sorvane
