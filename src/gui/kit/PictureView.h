#pragma once

#include <QWidget>

#include "core/DisplayList.h"

class QPainter;

namespace kelvo {

/// Twips of the drawing surface that a view shows.
constexpr float SurfaceWidth = 9400, SurfaceHeight = 6700;

/// Paints a picture into a rectangle of any size. Places scale with the rectangle in both directions; letters, dots
/// and line widths scale alike, by the smaller of the two, so that nothing is distorted.
void PaintPicture(QPainter& painter, const QRectF& target, const DisplayList& picture, float width = SurfaceWidth,
                  float height = SurfaceHeight);

/// Shows a picture on a white ground and follows the window's size and pixel density.
class PictureView : public QWidget {
    Q_OBJECT
 public:
    /// @param width,height twips of the surface that the list is drawn for
    explicit PictureView(const DisplayList& picture, QWidget* parent = nullptr, float width = SurfaceWidth,
                         float height = SurfaceHeight);
    QSize sizeHint() const override { return {760, 540}; }
    QSize minimumSizeHint() const override { return {420, 300}; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    const DisplayList& picture_;
    float width_, height_;
};

}  // namespace kelvo
