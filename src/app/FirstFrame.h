#pragma once

#include <QObject>
#include <functional>

class QCoreApplication;

namespace kelvo {

/// What the first frame of the opening screen does without: it is done right after that frame, and before anything
/// else can be seen or answered.
class FirstFrame : public QObject {
 public:
    /// @param rest  runs once: after the opening screen is first painted; before a key or a press of the mouse is
    ///              delivered; before a widget of another window is measured or shown; or by `Finish`, whichever comes
    ///              first
    FirstFrame(QCoreApplication& app, std::function<void()> rest);
    void Finish();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QCoreApplication& app_;
    std::function<void()> rest_;
};

}  // namespace kelvo
