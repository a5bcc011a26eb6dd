#include "app/Screens.h"

#include "addition/frmknosp.h"
#include "calibration/fmISEcli.h"
#include "calibration/fmpaidat.h"
#include "calibration/frmsetup.h"
#include "core/frmenu.h"
#include "core/frmtxt.h"
#include "help/frmInput.h"
#include "help/frmMsg.h"
#include "help/frmNorvak.h"
#include "link/frmAutoD.h"
#include "link/frmHware.h"
#include "link/frmPortSettings.h"
#include "link/frmPtset.h"
#include "platform/Desk.h"
#include "platform/PortDialogDesk.h"
#include "tables/frmQSave.h"
#include "utilities/frmacft.h"
#include "utilities/frmcnvs.h"
#include "utilities/frmselity.h"

namespace kelvo {
namespace {

template <typename Form>
void Register(House& house, ScreenCode code) {
    house.desk.Register(code, [&house] { return new Form(house); });
}

void RegisterOnLine(House& house) {
    Register<frmPortSettings>(house, ScreenCode::frmPortSettings);
    Register<frmPtset>(house, ScreenCode::frmPtset);
    FollowPortDialog(house);
}

}  // namespace

void RegisterScreens(House& house) {
    Register<frmNorvak>(house, ScreenCode::frmNorvak);
    Register<frmtxt>(house, ScreenCode::frmtxt);
    Register<frmenu>(house, ScreenCode::frmenu);
    Register<frmInput>(house, ScreenCode::frmInput);
    Register<frmMsg>(house, ScreenCode::frmMsg);
    Register<frmQSave>(house, ScreenCode::frmQSave);
    Register<frmcnvs>(house, ScreenCode::frmcnvs);
    Register<frmselity>(house, ScreenCode::frmselity);
    Register<frmacft>(house, ScreenCode::frmacft);
    Register<frmHware>(house, ScreenCode::frmHware);
    Register<frmsetup>(house, ScreenCode::frmsetup);
    Register<fmpaidat>(house, ScreenCode::fmpaidat);
    Register<frmknosp>(house, ScreenCode::frmknosp);
    Register<fmISEcli>(house, ScreenCode::fmISEcli);
    Register<frmAutoD>(house, ScreenCode::frmAutoD);
    if (house.link != nullptr) RegisterOnLine(house);
}

}  // namespace kelvo
