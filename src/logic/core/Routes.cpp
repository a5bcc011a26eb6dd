#include "core/Routes.h"

#include <array>

#include "core/HardwareSettings.h"
#include "core/ScreenCode.h"

namespace kelvo {

namespace text {
const char* const ProgramTitle = "Norvak Ion-Selective / pH Measurement Software";
const char* const SureToExit = "Are you sure you want to exit?";
const char* const NoCalibrationForIon =
    "No calibration data for the selected ion, click on 'Yes' to do the calibration now, click on 'No' to type in the "
    "electrode slope and temperature";
const char* const InterfaceNotReady =
    "The interface is not ready, please check the connection, or if you use Printer/Interface switch box, make sure it "
    "is switched to the Interface";
}  // namespace text

const std::array<StartRow, 4>& StartRows() {
    static const std::array<StartRow, 4> rows = {{
        {"pH Measurement",
         "pH measurement includes: Introduction to pH measurement, Calibration, Display and Recording of experimental data.       Can also be used for Redox (ORP)."},
        {"ISE Measurement",
         "ISE measurement includes: Introduction to ISE measurement,  Calibration,  Potentiometry, Standard Addition and Sample Addition."},
        {"Labkit",
         "Labkit package includes useful tools such as: Conversion of concentration units, Calculation of dilution factors, ISE Selectivity and Activity Coefficients."},
        {"Hardware Setup",
         "You need to define your hardware configuration and connections before starting measurements or after making any hardware changes, e.g. changing the ISE,  adding or removing a pH electrode."},
    }};
    return rows;
}

const RouteBranch& MenuBranch(int branch) {
    using enum RouteNeed;
    static const std::array<RouteBranch, 3> branches = {{
        {"Kelvo : pH Measurement",
         "pH Measurement",
         {{"Introduction", "To learn more about the pH measurement, select Introduction", ScreenCode::frminfo, Nothing,
           -1, -1},
          {"Calibration", "To start a calibration, using up to 4 different buffer solutions, select Calibration",
           ScreenCode::frmPHSe, AnyPhChannel, 7, 1},
          {"Measurement", "To read / display a current measurement based on the latest calibration, select Measurement",
           ScreenCode::frmDsply, AnyPhChannel, 7, 2},
          {"pH Continuous Recording", "For continuous monitoring and graphical display, select pH Continuous Recording",
           ScreenCode::frmPHSe, Nothing, 7, 3}}},
        {"Kelvo : ISE Measurement",
         "ISE Measurement",
         {{"Introduction", "To learn more about the ISE measurement, select Introduction", ScreenCode::frminfo, Nothing,
           -1, -1},
          {"Calibration", "To start an Ion-selective electrode calibration, select Calibration ", ScreenCode::frmsetup,
           IseChannel, 0, 1},
          {"Potentiometry",
           "To read / display a current measurement based on an old / saved calibration, also to view and print old / "
           "saved data files, select Potentiometry",
           ScreenCode::fmISEcli, IseChannel, 1, -1},
          {"Standard Addition", "To start a standard addition measurement, select Standard Addition",
           ScreenCode::frmStanad01, IseChannelAndSlope, 2, -1},
          {"Sample Addition", "To start a sample addition measurement, select Sample Addition", ScreenCode::frmSampa,
           IseChannelAndSlope, 3, -1},
          {"ISE Continuous Recording",
           "For continuous monitoring and graphical display, select ISE Continuous Recording", ScreenCode::frmPHSe,
           Nothing, -1, -1}}},
        {"Kelvo : Laboratory Utilities",
         "Labkit",
         {{"Conversion / Dilution",
           "To calculate a conversion of concentration units, or dilution factors, select Conversion / Dilution",
           ScreenCode::frmcnvs, Nothing, 5, -1},
          {"ISE Selectivity",
           "To calculate and display selectivity coefficients and interference effects, select ISE Selectivity",
           ScreenCode::frmselity, Nothing, 4, -1},
          {"Activity Coefficients",
           "To calculate activity coefficients and convert from activity to concentration, select Activity "
           "Coefficients",
           ScreenCode::frmacft, Nothing, 6, -1}}},
    }};
    return branches[static_cast<std::size_t>(branch >= 0 && branch < 3 ? branch : 1)];
}

std::string RouteRefusal(const HardwareSettings& hardware, const RouteRow& row) {
    switch (row.need) {
        case RouteNeed::Nothing: return {};
        case RouteNeed::IseChannel:
            if (hardware.Channel[1] == 1) return {};
            return "The ISE channel is not avaliable, please re-configure the hardware setup.";
        case RouteNeed::IseChannelAndSlope:
            if (hardware.Channel[1] == 1) return {};
            return "The channel is not avaliable, please re-configure the hardware setup.";
        case RouteNeed::AnyPhChannel:
            if (hardware.Channel[0] == 1 || hardware.Channel[3] == 1) return {};
            return "None of the channels are avaliable, please re-configure the hardware setup.";
    }
    return {};
}

}  // namespace kelvo
