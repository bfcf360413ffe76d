// What an empty view says.
#pragma once

#include <QLabel>

namespace sorvane {
class EngagementList;

// Two grey lines in the lower half of the view, shown as long as no engagement is loaded. Grabbed frames don't contain
// them.
class EmptyHint : public QLabel {
public:
    EmptyHint(QWidget& view, const EngagementList& engagements);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
} // namespace sorvane
