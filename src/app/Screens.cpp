#include "app/Screens.h"

#include "addition/frmAdditions.h"
#include "addition/frmSampa.h"
#include "addition/frmStanad01.h"
#include "addition/frmknosp.h"
#include "calibration/fmISEcli.h"
#include "calibration/fmpaidat.h"
#include "calibration/frmDrift.h"
#include "calibration/frmQuality.h"
#include "calibration/frmStandards.h"
#include "calibration/frmsetup.h"
#include "core/frmenu.h"
#include "core/frmtxt.h"
#include "help/frmInput.h"
#include "help/frmManual.h"
#include "help/frmMsg.h"
#include "help/frmNorvak.h"
#include "help/frminfo.h"
#include "help/frminfo2.h"
#include "kit/ScreenManager.h"
#include "link/PortDialogControl.h"
#include "link/frmAutoD.h"
#include "link/frmHware.h"
#include "link/frmPortSettings.h"
#include "link/frmPtset.h"
#include "ph/frmDsply.h"
#include "ph/frmPHMe.h"
#include "ph/frmPHSe.h"
#include "ph/frmPset.h"
#include "tables/frmQSave.h"
#include "tables/frmResults.h"
#include "utilities/frmacft.h"
#include "utilities/frmcnvs.h"
#include "utilities/frmselity.h"

namespace kelvo {
namespace {

template <typename Form>
void Register(AppContext& context, ScreenCode code) {
    context.screens.Register(code, [&context] { return new Form(context); });
}

void RegisterOnLine(AppContext& context) {
    Register<frmPortSettings>(context, ScreenCode::frmPortSettings);
    Register<frmPtset>(context, ScreenCode::frmPtset);
    FollowPortDialog(context);
}

}  // namespace

void RegisterScreens(AppContext& context) {
    Register<frmNorvak>(context, ScreenCode::frmNorvak);
    Register<frmtxt>(context, ScreenCode::frmtxt);
    Register<frmenu>(context, ScreenCode::frmenu);
    Register<frmInput>(context, ScreenCode::frmInput);
    Register<frmMsg>(context, ScreenCode::frmMsg);
    Register<frmQSave>(context, ScreenCode::frmQSave);
    Register<frmResults>(context, ScreenCode::frmResults);
    Register<frminfo>(context, ScreenCode::frminfo);
    Register<frminfo2>(context, ScreenCode::frminfo2);
    Register<frmManual>(context, ScreenCode::frmManual);
    Register<frmcnvs>(context, ScreenCode::frmcnvs);
    Register<frmselity>(context, ScreenCode::frmselity);
    Register<frmacft>(context, ScreenCode::frmacft);
    Register<frmHware>(context, ScreenCode::frmHware);
    Register<frmsetup>(context, ScreenCode::frmsetup);
    Register<fmpaidat>(context, ScreenCode::fmpaidat);
    Register<frmknosp>(context, ScreenCode::frmknosp);
    Register<frmStanad01>(context, ScreenCode::frmStanad01);
    Register<frmAdditions>(context, ScreenCode::frmAdditions);
    Register<frmSampa>(context, ScreenCode::frmSampa);
    Register<fmISEcli>(context, ScreenCode::fmISEcli);
    Register<frmAutoD>(context, ScreenCode::frmAutoD);
    Register<frmQuality>(context, ScreenCode::frmQuality);
    Register<frmDrift>(context, ScreenCode::frmDrift);
    Register<frmStandards>(context, ScreenCode::frmStandards);
    Register<frmPHSe>(context, ScreenCode::frmPHSe);
    Register<frmPset>(context, ScreenCode::frmPset);
    Register<frmDsply>(context, ScreenCode::frmDsply);
    Register<frmPHMe>(context, ScreenCode::frmPHMe);
    if (context.link != nullptr) RegisterOnLine(context);
}

}  // namespace kelvo
