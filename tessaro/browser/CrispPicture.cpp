#include "tessaro/browser/CrispPicture.h"

#include <QPaintDevice>
#include <QTransform>

#include <cmath>

void DrawCrisp(QPainter& painter, QPoint place, const QImage& picture) {
    if (picture.isNull())
        return;
    const double factor = painter.device()->devicePixelRatioF();
    const int whole = static_cast<int>(std::ceil(factor));
    QImage shown = picture;
    if (whole > 1)
        shown = picture.scaled(picture.size() * whole, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    if (whole != factor)
        shown = shown.scaled(qRound(picture.width() * factor), qRound(picture.height() * factor), Qt::IgnoreAspectRatio,
                             Qt::SmoothTransformation);
    shown.setDevicePixelRatio(factor);
    const QTransform device = painter.deviceTransform();
    const QPointF begin = device.map(QPointF(place));
    painter.drawImage(device.inverted().map(QPointF(std::round(begin.x()), std::round(begin.y()))), shown);
}
