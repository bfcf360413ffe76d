// The viewer's icon, drawn at the sizes that desktops ask for.
#include "windowicon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// In no namespace: it declares what the resource compiler defines.
static void initialiseIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace sorvane {
QImage drawnIcon(int side) {
    initialiseIcons();
    QSvgRenderer drawing(QStringLiteral(":/icons/sorvane.svg"));
    QImage icon(side, side, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    drawing.render(&painter);
    return icon;
}

QIcon windowIcon() {
    QIcon drawn;
    for (const int side : kIconSides)
        drawn.addPixmap(QPixmap::fromImage(drawnIcon(side)));
    return QIcon::fromTheme(QStringLiteral("sorvane"), drawn);
}
} // namespace sorvane
