#pragma once

#include <QObject>
#include <functional>

namespace kelvo {

/// The ends of the program that no screen asks for: SIGTERM, SIGHUP and SIGINT, the log-out of the desktop, and an exit
/// that a library takes by itself, as when the display goes away. One exists at a time, as long as the event loop runs.
class SessionEnd : public QObject {
    Q_OBJECT
 public:
    struct Steps {
        std::function<void()> end;   ///< a signal: keeps what is not saved, may ask, then ends the program
        std::function<void()> keep;  ///< log-out or sudden exit: keeps what is not saved, shows nothing
    };
    explicit SessionEnd(Steps steps);
    ~SessionEnd() override;

 private:
    void TakeSignal();

    Steps steps_;
    int signals_[2] = {-1, -1};  ///< a handler writes to the second end, the event loop reads the first
    bool ending_ = false;
};

}  // namespace kelvo
