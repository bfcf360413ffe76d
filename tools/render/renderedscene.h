// The scene of a rendering: its engagements in a view, what they lack, and pictures of them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <QImage>

#include "offscreenview.h"
#include "panes.h"
#include "picturetexts.h"
#include "radiancefile.h"
#include "renderplan.h"

namespace sorvane {
struct TrajectoryFileHeader;

// Lives on one thread, on which its OpenGL context is current.
class RenderedScene {
public:
    // Takes what someone should be told: files that can't be used, and what those that can lack.
    using Say = std::function<void(const std::string&)>;

    // The request must outlive it.
    RenderedScene(const RenderRequest& request, Say say);

    // Loads the request's files. Why nothing can be drawn of them; nothing when all is well.
    std::optional<sorvane::Problem> load();

    bool hasUnusableFile() const { return hasUnusableFile_; }
    // Nothing that was to be drawn is missing.
    bool isComplete() const { return isComplete_; }
    // Of the longest engagement.
    double endSeconds() const { return endSeconds_; }
    // The free view that has all of the followed engagement in the picture, or in its pane.
    CameraChoice overview() const { return view_.overview(followed_); }

    // A picture at the options' time, with the texts that are asked for: a pane for each camera, of which there are as
    // many as the request has panes, or one. Null when the scene could not be drawn.
    QImage draw(const SceneOptions& scene, std::span<const CameraChoice> cameras);

    // The same in radiances, as frame number `frame` of the request's sensor has them. Nothing when the scene could not
    // be drawn.
    std::optional<RadianceImage>
    drawRadiance(const SceneOptions& scene, const CameraChoice& camera, std::int64_t frame);

private:
    std::optional<sorvane::Problem> problem() const;
    QImage drawView(const SceneOptions& scene, const CameraChoice& camera, const PictureScale& scale);
    PictureScale scaleOf(std::size_t pane) const;
    bool loadFile(const std::string& path);
    std::optional<std::string> addEngagement(const std::string& path);
    void reportStockFiles(const std::string& name, const TrajectoryFileHeader& header);
    bool reportParts(const std::string& name, const std::vector<LoadedPart>& parts);
    void reportTimes(const std::string& name, double first, double last);
    // Tells of something that the picture lacks.
    void miss(const std::string& text) {
        say_(text);
        isComplete_ = false;
    }
    bool isFollowedFile(std::size_t file) const { return request_.followedFile == file + 1; }

    const RenderRequest& request_;
    Say say_;
    PaneLayout layout_;
    OffscreenView view_; // of a pane's size
    PictureTexts texts_;
    double endSeconds_ = 0.0;
    std::size_t followed_ = 0; // among those that could be loaded
    bool hasUnusableFile_ = false;
    bool isComplete_ = true;
};
} // namespace sorvane
