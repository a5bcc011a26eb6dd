#pragma once

#include <QTextBrowser>
#include <vector>

#include "help/Illustrations.h"
#include "help/TextBlocks.h"

class QTextCursor;

namespace kelvo {

/// Writes blocks into a document: headings, paragraphs with air between, lists, tables in a face of one width.
/// @param points size of the running text
void WriteBlocks(QTextCursor& cursor, const std::vector<TextBlock>& blocks, double points);
/// Places an illustration into a document, as lines and letters also on paper.
void WriteIllustration(QTextCursor& cursor, const DisplayList& picture, double width);

/// A text to be read: selected and copied, not changed; lines never longer than the eye follows; larger and smaller
/// with Ctrl and the wheel.
class ReadingView : public QTextBrowser {
    Q_OBJECT
 public:
    explicit ReadingView(QWidget* parent = nullptr);
    void Show(const std::vector<TextBlock>& blocks);
    /// 1 as the desktop has it; kept between 0.7 and 3.
    void SetZoom(double zoom);
    double Zoom() const { return zoom_; }
    /// Width in pixels beyond which its lines grow no longer.
    int WidestUseful() const;

 signals:
    void ZoomAsked(int steps);

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    double Measure() const;
    void LimitLines();

    std::vector<TextBlock> blocks_;
    double zoom_ = 1;
};

}  // namespace kelvo
