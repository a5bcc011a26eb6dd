#pragma once

namespace kelvo {

/// Numbers of the screens, as `CloseSubScreen` and `ReturnScreen` use them. 5 belongs to no screen.
enum class ScreenCode : int {
    None = 0,
    fmISEcli = 1,
    fmpaidat = 2,
    frmacft = 3,
    frmcnvs = 4,
    frmDsply = 6,
    frmNorvak = 7,
    frmenu = 8,
    frmHware = 9,
    frminfo = 10,
    frminfo2 = 11,
    frmknosp = 12,
    frmMsg = 13,
    frmtxt = 14,
    frmPHMe = 15,
    frmPHSe = 16,
    frmPset = 17,
    frmPtset = 18,
    frmQSave = 19,
    frmselity = 20,
    frmsetup = 21,
    frmSampa = 22,
    frmStanad01 = 23,
    frmInput = 24,
    // Screens that no number of Kelvo names; the screen manager needs one all the same.
    frmPortSettings = 101,
    frmAutoD = 102,
    frmManual = 103,
    frmQuality = 104,
    frmResults = 105,
    frmAdditions = 106,
    frmDrift = 107,
    frmStandards = 108,
};

}  // namespace kelvo
