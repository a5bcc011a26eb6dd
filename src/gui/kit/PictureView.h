#pragma once

#include <QWidget>
#include <functional>
#include <string>

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
    /// Who can tell in words what the picture shows; a screen reader reads it as it stands when it asks.
    void SetWords(std::function<std::string()> words) { words_ = std::move(words); }
    /// Those words, or without them the picture's own texts.
    QString Description() const;

    QSize sizeHint() const override { return {760, 540}; }
    QSize minimumSizeHint() const override { return {420, 300}; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    void TellReaders();

    const DisplayList& picture_;
    float width_, height_;
    std::function<std::string()> words_;
    QString told_;  ///< the words of which a screen reader last heard
};

}  // namespace kelvo
