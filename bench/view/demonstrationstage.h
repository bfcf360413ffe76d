// The demonstration's first engagement with its terrain, ready to be drawn.
#pragma once

#include <cstdlib>

#include <QTemporaryDir>

#include "etxyz.h"
#include "makedemonstration.h"
#include "offscreencontext.h"
#include "scene.h"

namespace sorvane {
struct DemonstrationStage {
    static constexpr int kWidth = 824;
    static constexpr int kHeight = 480;

    QTemporaryDir folder;
    OffscreenContext context{kWidth, kHeight};
    etxyz engagement;

    DemonstrationStage() {
        const std::string demonstration = folder.filePath("demo").toStdString();
        if (context.problem() || makeDemonstration(demonstration))
            std::abort();
        ::setenv("PELSAR_DATA", (demonstration + "/data/").c_str(), 1);
        engagement.LoadETXYZ(QString::fromStdString(demonstration + "/ETXYZ.OUT.turn"));
        engagement.InitHardbodies();
        setUpScene();
    }
};
} // namespace sorvane
