#include "devices/QtProgress.h"

#include <QtWidgets>

namespace kelvo {
namespace {

constexpr int EventsEachMs = 40;    ///< a poll of the interface may wait this long
constexpr int DialogAfterMs = 400;  ///< shorter steps show no dialog

}  // namespace

QtProgress::QtProgress(QWidget* parent, QString what) : parent_(parent), what_(std::move(what)) {
    sinceStart_.start();
    sinceEvents_.start();
}

QtProgress::~QtProgress() {
    delete dialog_.data();
}

void QtProgress::Show() {
    dialog_ = new QProgressDialog(what_, QProgressDialog::tr("Cancel"), 0, 0, parent_);
    dialog_->setObjectName(QStringLiteral("progress"));
    dialog_->setWindowTitle(QStringLiteral(" "));
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setAutoReset(false);
    dialog_->setMinimumDuration(0);
    dialog_->show();
}

bool QtProgress::At(int done, int total) {
    if (sinceEvents_.elapsed() < EventsEachMs) return dialog_ == nullptr || !dialog_->wasCanceled();
    if (dialog_ == nullptr && sinceStart_.elapsed() >= DialogAfterMs) Show();
    if (dialog_ == nullptr) {
        // Before the dialog stands in front, a click would reach the screen that is in the middle of its step.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    } else {
        dialog_->setMaximum(total);
        // A bar that is full closes its dialog; the rest of the step is still to come.
        dialog_->setValue(total > 0 ? std::min(done, total - 1) : 0);
        QCoreApplication::processEvents();
    }
    sinceEvents_.restart();
    return dialog_ == nullptr || !dialog_->wasCanceled();
}

}  // namespace kelvo
