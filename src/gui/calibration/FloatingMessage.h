#pragma once

#include <QLabel>
#include <QPoint>

namespace kelvo {

/// The help message that lies on the graph. It can be dragged, and stays inside its parent.
class FloatingMessage : public QLabel {
    Q_OBJECT
 public:
    explicit FloatingMessage(QWidget* parent);
    /// Moves it to where it fits wholly into the parent.
    void MoveInside(QPoint place);
    bool Dragged() const { return dragged_; }
    /// Forgets that it was dragged, so that it takes its own place again.
    void TakeOwnPlace() { dragged_ = false; }

 signals:
    void Clicked();

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    QPoint grip_;
    bool moving_ = false;
    bool dragged_ = false;
};

}  // namespace kelvo
