#include "link/PortDialogControl.h"

#include <QApplication>
#include <QTimer>

#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"

namespace kelvo {
namespace {

using Window = PortDialog::Window;
constexpr ScreenCode Dialog = ScreenCode::frmPortSettings;

void ShowInFront(AppContext& context) {
    ScreenManager& screens = context.screens;
    if (screens.Ended() || context.link->Port().Dialog.window != Window::Normal || screens.IsShown(Dialog)) return;
    // Beside a modal window it could not be clicked: it becomes the modal one in front then.
    const bool covered = QApplication::activeModalWidget() != nullptr;
    screens.Load(Dialog).setWindowModality(covered ? Qt::ApplicationModal : Qt::NonModal);
    screens.Show(Dialog);
}

void FollowWindow(AppContext& context) {
    ScreenManager& screens = context.screens;
    const Window window = context.link->Port().Dialog.window;
    if (screens.Ended()) return;
    if (window == Window::Unloaded)
        screens.Close(Dialog);
    else if (window != Window::Normal)
        screens.Hide(Dialog);
    else
        // The step that has started the link may still bring a modal window up.
        QTimer::singleShot(0, &screens, [&context] { ShowInFront(context); });
}

}  // namespace

void FollowPortDialog(AppContext& context) {
    context.link->Port().WindowChanged = [&context] { FollowWindow(context); };
}

void ShowPortDialogModal(AppContext& context) {
    CommPort& port = context.link->Port();
    port.Load();
    port.SetBitRateComboBox();
    // A window that stands beside the others already has to come back in front of them.
    context.screens.Hide(Dialog);
    port.Dialog.window = Window::Normal;
    context.screens.ShowModal(Dialog);
}

void StartLinkForEntry(AppContext& context) {
    if (context.link == nullptr) return;
    context.link->StartLink();
    if (context.link->Port().Dialog.window == Window::Normal) ShowPortDialogModal(context);
}

}  // namespace kelvo
