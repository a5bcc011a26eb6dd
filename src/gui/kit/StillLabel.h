#pragma once

#include <QLabel>
#include <QTextLayout>

namespace kelvo {

/// A label whose text stays: it is laid out once and painted from there, where a QLabel does so each time that it is
/// measured or painted. Plain text, wrapped at the width it has when it wraps words. To style sheets and screen
/// readers it is a QLabel.
class StillLabel : public QLabel {
 public:
    explicit StillLabel(const QString& text);

    /// Shows the text at this part of its font's size, for a second size without a second face: each one that is opened
    /// is searched for, hinted and shaped anew.
    void SetScale(qreal scale) { scale_ = scale; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    bool hasHeightForWidth() const override { return false; }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    /// Breaks the text into lines of at most that width.
    void LayOut(qreal width) const;

    qreal scale_ = 1;
    mutable QTextLayout layout_;
    mutable qreal width_ = -1;  ///< that it is laid out for; less than 0: not yet
    mutable QSizeF size_;       ///< of the text
};

}  // namespace kelvo
