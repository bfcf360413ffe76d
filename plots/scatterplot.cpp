// Two columns of a set against each other, a point for each row.
#include "scatterplot.h"

#include <cmath>

namespace sorvane {
// All points as small squares. They are put into a picture and not drawn one by one: a hundred thousand of them are a
// matter of milliseconds then.
class PointCloud : public QCPAbstractPlottable {
public:
    explicit PointCloud(ScatterPlot& plot) : QCPAbstractPlottable(plot.xAxis, plot.yAxis), plot_(plot) {
        setSelectable(QCP::stNone);
    }

    QCPRange getKeyRange(bool& isFound, QCP::SignDomain /*domain*/) const override {
        isFound = true;
        return ScatterPlot::rangeOf(plot_.across_);
    }
    QCPRange getValueRange(bool& isFound, QCP::SignDomain /*domain*/, const QCPRange& /*keys*/) const override {
        isFound = true;
        return ScatterPlot::rangeOf(plot_.up_);
    }
    double selectTest(const QPointF& /*position*/, bool /*onlySelectable*/, QVariant* /*details*/) const override {
        return -1.0; // points are brushed, never selected one by one
    }

protected:
    void draw(QCPPainter* painter) override {
        const QRect place = clipRect();
        const double ratio = plot_.bufferDevicePixelRatio();
        QImage picture(place.size() * ratio, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        // Those that stand out lie above.
        if (plot_.hasMarks()) {
            put(picture, place, ratio, plot_.theme().grid.darker(120), 0);
            put(picture, place, ratio, plot_.theme().curve(1), 1);
        } else {
            put(picture, place, ratio, plot_.theme().curve(0), 0);
        }
        picture.setDevicePixelRatio(ratio);
        painter->drawImage(place.topLeft(), picture);
    }
    void drawLegendIcon(QCPPainter* /*painter*/, const QRectF& /*rect*/) const override {}

private:
    // A set with few rows has larger points.
    int sideOf(double ratio) const {
        constexpr std::size_t kFew = 3000;
        return static_cast<int>(std::lround((plot_.across_.values.size() <= kFew ? 5.0 : 3.0) * ratio));
    }

    void put(QImage& picture, const QRect& place, double ratio, QColor colour, std::uint8_t mark) const {
        const std::vector<double>& x = plot_.across_.values;
        const std::vector<double>& y = plot_.up_.values;
        const QRgb value = qPremultiply(colour.rgba());
        const int side = sideOf(ratio);
        const int half = side / 2;
        for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
            const bool isMarked = i < plot_.marks().size() && plot_.marks()[i] != 0;
            if (isMarked != (mark != 0) || !std::isfinite(x[i]) || !std::isfinite(y[i]))
                continue;
            const double left = (mKeyAxis->coordToPixel(x[i]) - place.left()) * ratio - half;
            const double top = (mValueAxis->coordToPixel(y[i]) - place.top()) * ratio - half;
            if (left < -side || top < -side || left > picture.width() || top > picture.height())
                continue;
            const QRect square = QRect(static_cast<int>(left), static_cast<int>(top), side, side) & picture.rect();
            for (int row = square.top(); row <= square.bottom(); ++row)
                std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(row)) + square.left(), square.width(), value);
        }
    }

    ScatterPlot& plot_;
};

ScatterPlot::ScatterPlot(QWidget* parent) : SetPlot(parent) {
    new PointCloud(*this); // the plot has it
    showAll();
}

void ScatterPlot::setColumns(PlottedColumn across, PlottedColumn up) {
    across_ = std::move(across);
    up_ = std::move(up);
    labelAxis(*xAxis, across_);
    labelAxis(*yAxis, up_);
    showAll();
    setMarks({});
}

void ScatterPlot::showAll() {
    xAxis->setRange(rangeOf(across_));
    yAxis->setRange(rangeOf(up_));
}
} // namespace sorvane
