#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>

#include "core/Progress.h"

class QProgressDialog;
class QWidget;

namespace kelvo {

/// Keeps the program alive through a long step: events are handled several times a second, so that the polling of the
/// interface goes on, and after a short while a dialog tells how far the step is and offers to cancel it. The analyst's
/// keys and clicks reach that dialog alone.
class QtProgress : public Progress {
 public:
    /// @param what told in the dialog: "Exporting the table."
    QtProgress(QWidget* parent, QString what);
    ~QtProgress() override;

    bool At(int done, int total) override;

 private:
    void Show();

    QPointer<QWidget> parent_;
    QString what_;
    QPointer<QProgressDialog> dialog_;
    QElapsedTimer sinceStart_, sinceEvents_;
};

}  // namespace kelvo
