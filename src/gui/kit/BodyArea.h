#pragma once

#include <QScrollArea>

namespace kelvo {

/// The body of a window: as large as its content as long as there is room, and scrolled where there is less, so that
/// nothing is squeezed or cut. What gets the focus is brought into sight. Its size hints are those of the content, and
/// when the content comes to need more than before, or a longer remark below it takes room from it, the window grows as
/// far as the display allows.
class BodyArea : public QScrollArea {
    Q_OBJECT
 public:
    explicit BodyArea(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    /// Size of the window in which the content is whole without scrolling.
    QSize WindowNeeded() const;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    QSize Needed(int width) const;
    void Grow();
    void FitWindow();

    QSize needed_;  ///< of the content, when it was last looked at
    QSize window_;  ///< size of the window then
};

}  // namespace kelvo
