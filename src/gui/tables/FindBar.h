#pragma once

#include <QWidget>

class QLineEdit;

namespace kelvo {

/// The line below a grid to look for a text in it: hidden until it is asked for, Enter or F3 goes on, Escape closes it.
class FindBar : public QWidget {
    Q_OBJECT
 public:
    explicit FindBar(QWidget* parent = nullptr);

    /// Shows it with its text selected.
    void Ask();
    QString Text() const;

 signals:
    void Wanted(bool forward);
    void Closed();

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QLineEdit* txtFind_;
};

}  // namespace kelvo
