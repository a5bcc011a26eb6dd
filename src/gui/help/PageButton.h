#pragma once

#include <QAbstractButton>

#include "core/DisplayList.h"

namespace kelvo {

/// "Image1": a page with its corner turned, pressed like a button.
class PageButton : public QAbstractButton {
    Q_OBJECT
 public:
    /// @param back the way back to the first sheet
    explicit PageButton(bool back, QWidget* parent = nullptr);
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    DisplayList picture_;
};

/// The illustration of a sheet as a widget of fixed proportions.
class IllustrationView : public QWidget {
    Q_OBJECT
 public:
    explicit IllustrationView(QWidget* parent = nullptr);
    void Show(const DisplayList& picture);
    QSize sizeHint() const override { return {360, 260}; }
    QSize minimumSizeHint() const override { return {260, 188}; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    DisplayList picture_;
};

}  // namespace kelvo
