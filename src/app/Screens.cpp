#include "app/Screens.h"

#include "core/frmenu.h"
#include "core/frmtxt.h"
#include "help/frmInput.h"
#include "help/frmNorvak.h"
#include "platform/Desk.h"

namespace kelvo {
namespace {

template <typename Form>
void Register(House& house, ScreenCode code) {
    house.desk.Register(code, [&house] { return new Form(house); });
}

}  // namespace

void RegisterScreens(House& house) {
    Register<frmNorvak>(house, ScreenCode::frmNorvak);
    Register<frmtxt>(house, ScreenCode::frmtxt);
    Register<frmenu>(house, ScreenCode::frmenu);
    Register<frmInput>(house, ScreenCode::frmInput);
}

}  // namespace kelvo
