#pragma once

#include <QImage>
#include <QPainter>

/// Draws a picture so that its pixels stay visible: on a screen whose scale factor is whole each becomes a square of
/// that many pixels; on any other it is enlarged to the next whole factor and brought down from there. It begins at the
/// device's pixel that is nearest to the place.
void DrawCrisp(QPainter& painter, QPoint place, const QImage& picture);
