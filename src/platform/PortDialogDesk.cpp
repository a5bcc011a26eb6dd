#include "platform/PortDialogDesk.h"

#include "link/Link.h"
#include "platform/Desk.h"

namespace kelvo {
namespace {

using Window = PortDialog::Window;
constexpr ScreenCode Dialog = ScreenCode::frmPortSettings;

void FollowWindow(Desk& desk, Window window) {
    if (desk.Ended()) return;
    if (window == Window::Unloaded)
        desk.Close(Dialog);
    else if (window != Window::Normal)
        desk.Hide(Dialog);
    else if (!desk.IsShown(Dialog))
        desk.Show(Dialog);
}

}  // namespace

void FollowPortDialog(House& house) {
    house.link->Port().WindowChanged = [&house] { FollowWindow(house.desk, house.link->Port().Dialog.window); };
}

void ShowPortDialogModal(House& house) {
    CommPort& port = house.link->Port();
    port.Load();
    port.SetBitRateComboBox();
    // A window that stands beside the others already has to come back in front of them.
    house.desk.Hide(Dialog);
    port.Dialog.window = Window::Normal;
    house.desk.ShowModal(Dialog);
}

void StartLinkForEntry(House& house) {
    if (house.link == nullptr) return;
    house.link->StartLink();
    if (house.link->Port().Dialog.window == Window::Normal) ShowPortDialogModal(house);
}

}  // namespace kelvo
