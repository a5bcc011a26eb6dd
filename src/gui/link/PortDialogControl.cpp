#include "link/PortDialogControl.h"

#include "kit/ScreenManager.h"
#include "link/Link.h"

namespace kelvo {
namespace {

using Window = PortDialog::Window;
constexpr ScreenCode Dialog = ScreenCode::frmPortSettings;

void FollowWindow(ScreenManager& screens, Window window) {
    if (screens.Ended()) return;
    if (window == Window::Unloaded)
        screens.Close(Dialog);
    else if (window != Window::Normal)
        screens.Hide(Dialog);
    else if (!screens.IsShown(Dialog))
        screens.Show(Dialog);
}

}  // namespace

void FollowPortDialog(AppContext& context) {
    context.link->Port().WindowChanged = [&context] {
        FollowWindow(context.screens, context.link->Port().Dialog.window);
    };
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
